// Colours, images and text fitting that code over the shared model draws with.
#pragma once

#include <string_view>

#include "platform/views/Image.h"
#include "platform/views/Label.h"
#include "platform/views/TextMeasuring.h"
#include "platform/views/TextView.h"

namespace corvane {

/// 128, 148, 174 of 255.
Color toolbarColor();

/// The system's tertiary background, light or dark with the system.
Color keyboardBackgroundColor();

/// One pixel, one point large; components beyond 0...1 are clamped.
Image imageFromColor(const Color& color);

/// Gives the label the size of its text on one line plus margins, in whole points; the origin stays. A label
/// without a text measures nothing.
///
/// @param marginWidth, height  points added to the measured size, fractions rounded half up
void resizeToTextWithMarginWidth(Label& label, double marginWidth, double height,
                                 const TextMeasuring& measuring);

/// The height, in whole points rounded up, that a text takes in a text view of this content width.
double heightIfContainingString(const TextView& textView, std::u16string_view string,
                                const TextMeasuring& measuring);

}  // namespace corvane
