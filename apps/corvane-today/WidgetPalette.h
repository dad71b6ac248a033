// The window's colours, light and dark.
#pragma once

#include <optional>

#include <QColor>
#include <QPalette>

#include "platform/views/Color.h"

namespace corvane {

QColor qtColor(const Color& color);

class WidgetPalette {
  public:
    static WidgetPalette light();
    static WidgetPalette dark();

    bool isDark() const { return isDark_; }

    QColor ground() const { return qtColor(ground_); }
    QColor text() const { return qtColor(text_); }
    QColor quietText() const { return qtColor(quietText_); }
    QColor accent() const { return qtColor(accent_); }
    QColor hoverGround() const { return qtColor(hoverGround_); }
    QColor buttonGround() const { return qtColor(buttonGround_); }
    QColor hairline() const { return qtColor(hairline_); }

    /// A view's own colour, readable on the ground: fixed greys are turned in the dark, other colours moved
    /// as far as they have to be.
    QColor readable(const Color& color) const;
    QColor readable(const std::optional<Color>& color, const QColor& fallback) const;

    /// A list's colour, which stays as it is.
    QColor ofList(const Color& color) const;
    /// Whether a list's colour needs a border to be seen.
    bool isCloseToGround(const Color& color) const;

    /// For the style of all other widgets.
    QPalette qtPalette() const;

    bool operator==(const WidgetPalette&) const = default;

  private:
    bool isDark_ = false;
    Color ground_, text_, quietText_, accent_, hoverGround_, buttonGround_, hairline_;
};

}  // namespace corvane
