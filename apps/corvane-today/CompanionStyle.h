// Looks of the companion window: the widget's colours, the desktop's font.
#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

#include "apps/corvane-today/WidgetPalette.h"

namespace corvane {

/// The widget's colours that belong to a window's palette.
WidgetPalette paletteOf(const QWidget& widget);

/// For text about something that is wrong or late; readable on the ground.
QColor problemColor(const WidgetPalette& palette);

QFont headingFont(const QFont& font);
QFont titleFont(const QFont& font);
QFont detailsFont(const QFont& font);

/// A distance in the text's own size: so many times the height of an "x".
int spacing(const QWidget& widget, double timesX);

/// Rounded fields and quiet buttons in the palette's colours.
QString companionStyleSheet(const WidgetPalette& palette);

}  // namespace corvane
