#include "platform/foundation/LeadingInteger.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace corvane {

std::optional<std::int64_t> leadingInteger(std::string_view text) {
    using Limits = std::numeric_limits<std::int64_t>;
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with('-');
    if (text.starts_with("+") && text.substr(1, 1) != "-") text.remove_prefix(1);
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) return isNegative ? Limits::min() : Limits::max();
    if (result.ec != std::errc()) return std::nullopt;
    return number;
}

}  // namespace corvane
