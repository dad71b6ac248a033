// Colours that stay readable on the window's ground, whatever list or rule they come from.
//
// Contrast is that of WCAG 2.1: the ratio of relative luminances, 1 to 21.
#pragma once

#include "platform/views/Color.h"

namespace corvane {

/// What small text needs at least (WCAG 2.1, level AA).
inline constexpr double kReadableContrast = 4.5;

/// Of opaque colours; components are clamped to 0...1.
double contrastRatio(const Color& a, const Color& b);

/// The colour itself where it is readable on `ground`; else the nearest one towards black or white, whichever
/// the ground leaves more room for.
Color readableColor(const Color& color, const Color& ground, double contrast = kReadableContrast);

/// A grey that was chosen for a white ground, as it reads on a dark one: 0.15 becomes 0.92, 0.4 becomes 0.65.
Color greyInTheDark(const Color& grey);

/// A translucent colour as it looks on an opaque ground.
Color blendedColor(const Color& color, const Color& ground);

}  // namespace corvane
