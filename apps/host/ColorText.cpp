#include "apps/host/ColorText.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace corvane {

std::string textOfColor(const Color& color) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const double component : {color.red, color.green, color.blue, color.alpha}) {
        const double level = std::isnan(component) ? 0 : std::clamp(component, 0.0, 1.0);
        const auto byte = static_cast<std::size_t>(std::lround(level * 255));
        text += {kDigits[byte >> 4], kDigits[byte & 0xF]};
    }
    return text;
}

}  // namespace corvane
