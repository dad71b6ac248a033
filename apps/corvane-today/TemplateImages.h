// The project's own images: drawings in one colour, whose alpha a tint fills.
#pragma once

#include <string>

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace corvane {

/// Draws an asset into a rectangle, crisp at the painter's scale. A name without an image draws nothing.
void drawTemplateImage(QPainter& painter, const QRectF& place, const std::string& name, const QColor& tint);

/// An asset as an icon of a menu or button.
QIcon templateIcon(const std::string& name, const QColor& tint);

}  // namespace corvane
