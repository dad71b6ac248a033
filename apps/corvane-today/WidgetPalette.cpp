#include "apps/corvane-today/WidgetPalette.h"

#include <algorithm>

#include "apps/corvane-today/ContrastMapping.h"

namespace corvane {
namespace {

// What an area of colour needs to be told from what is around it (WCAG 2.1, non-text contrast, is 3; a strip
// beside its title needs less).
constexpr double kVisibleContrast = 1.6;

float component(double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); }

constexpr Color bytes(int red, int green, int blue) {
    return Color::rgb(red / 255.0, green / 255.0, blue / 255.0);
}

bool isGrey(const Color& color) { return color.form == Color::Form::kWhite; }

}  // namespace

QColor qtColor(const Color& color) {
    return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                            component(color.alpha));
}

WidgetPalette WidgetPalette::light() {
    WidgetPalette palette;
    palette.ground_ = Color::white(1);
    palette.text_ = Color::white(0.15);
    palette.quietText_ = Color::white(0.4);
    palette.accent_ = bytes(24, 108, 196);
    palette.hoverGround_ = bytes(243, 245, 248);
    palette.buttonGround_ = bytes(236, 242, 250);
    palette.hairline_ = bytes(232, 233, 236);
    return palette;
}

WidgetPalette WidgetPalette::dark() {
    WidgetPalette palette;
    palette.isDark_ = true;
    palette.ground_ = bytes(32, 33, 36);
    palette.text_ = Color::white(0.92);
    palette.quietText_ = Color::white(0.65);
    palette.accent_ = bytes(122, 178, 245);
    palette.hoverGround_ = bytes(43, 45, 49);
    palette.buttonGround_ = bytes(43, 52, 65);
    palette.hairline_ = bytes(53, 55, 60);
    return palette;
}

QColor WidgetPalette::readable(const Color& color) const {
    const Color turned = isDark_ && isGrey(color) ? greyInTheDark(color) : color;
    return qtColor(readableColor(blendedColor(turned, ground_), ground_));
}

QColor WidgetPalette::readable(const std::optional<Color>& color, const QColor& fallback) const {
    return color ? readable(*color) : fallback;
}

QColor WidgetPalette::ofList(const Color& color) const { return qtColor(color); }

bool WidgetPalette::isCloseToGround(const Color& color) const {
    return contrastRatio(blendedColor(color, ground_), ground_) < kVisibleContrast;
}

QPalette WidgetPalette::qtPalette() const {
    QPalette palette(qtColor(buttonGround_), ground());
    const QColor shade = ground().darker(isDark_ ? 140 : 110);
    palette.setColor(QPalette::Window, ground());
    palette.setColor(QPalette::Base, ground());
    palette.setColor(QPalette::AlternateBase, hoverGround());
    palette.setColor(QPalette::Button, isDark_ ? hoverGround() : QColor(247, 248, 250));
    palette.setColor(QPalette::Mid, hairline());
    palette.setColor(QPalette::Dark, shade);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text());
        palette.setColor(QPalette::Disabled, role, quietText());
    }
    palette.setColor(QPalette::PlaceholderText, quietText());
    palette.setColor(QPalette::ToolTipBase, hoverGround());
    palette.setColor(QPalette::Highlight, accent());
    palette.setColor(QPalette::HighlightedText, ground());
    palette.setColor(QPalette::Link, accent());
    palette.setColor(QPalette::LinkVisited, accent());
    return palette;
}

}  // namespace corvane
