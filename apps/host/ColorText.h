// Colours as texts.
#pragma once

#include <string>

#include "platform/views/Color.h"

namespace corvane {

/// "#rrggbbaa" in lower-case hexadecimal digits, components clamped and rounded.
std::string textOfColor(const Color& color);

}  // namespace corvane
