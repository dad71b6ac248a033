// How the window's parts draw: fonts, colours, and what is kept from onlookers. One for the whole window.
#pragma once

#include <QRectF>

#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/WidgetPalette.h"
#include "platform/views/Geometry.h"

namespace corvane {

struct WidgetLook {
    const QtTextMeasuring& measuring;
    WidgetPalette palette = WidgetPalette::light();
    bool isPrivate = false;  ///< texts of tasks are hidden

    const WidgetFonts& fonts() const { return measuring.fonts(); }
    /// Device-independent pixels of a length in points.
    double pixels(double points) const { return points * fonts().pixelsPerPoint(); }
    int wholePixels(double points) const { return qRound(pixels(points)); }
    QRectF pixels(const Rect& rect) const {
        return {pixels(rect.x), pixels(rect.y), pixels(rect.width), pixels(rect.height)};
    }
};

}  // namespace corvane
