#include "widget/DrawingHelpers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/foundation/Truncation.h"

namespace corvane {
namespace {

constexpr double kTextViewInsets = 16;  ///< left and right together
constexpr double kUnlimitedHeight = 999999;

// Single precision takes the noise out of a measured size: 10.0000001 stays 10.
double roundedUp(double measured) { return std::ceil(static_cast<float>(measured)); }

// Adding a half and cutting off rounds the margin's fraction to the nearest point.
double fitted(double measured, double margin) {
    return truncated<std::int32_t>(roundedUp(measured) + margin + 0.5);
}

std::uint8_t byteOfComponent(double component) {
    return static_cast<std::uint8_t>(truncated<std::int32_t>(std::clamp(component, 0.0, 1.0) * 255 + 0.5));
}

}  // namespace

Color toolbarColor() { return Color::rgb(0.5019607843137255, 0.5803921568627451, 0.6823529411764706); }

Color keyboardBackgroundColor() { return Color::tertiarySystemBackground(); }

Image imageFromColor(const Color& color) {
    Image image;
    image.size = {1, 1};
    image.pixels = {
        {byteOfComponent(color.red), byteOfComponent(color.green), byteOfComponent(color.blue),
         byteOfComponent(color.alpha)}
    };
    return image;
}

void resizeToTextWithMarginWidth(Label& label, double marginWidth, double height,
                                 const TextMeasuring& measuring) {
    const Size size = label.text ? measuring.sizeOfText(*label.text, label.font) : Size();
    label.frame.width = fitted(size.width, marginWidth);
    label.frame.height = fitted(size.height, height);
}

double heightIfContainingString(const TextView& textView, std::u16string_view string,
                                const TextMeasuring& measuring) {
    const Size available{textView.contentSize.width - kTextViewInsets, kUnlimitedHeight};
    return roundedUp(measuring.boundingSizeOfText(string, available, textView.font).height);
}

}  // namespace corvane
