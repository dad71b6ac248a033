#include "platform/foundation/PropertyList.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/foundation/Truncation.h"

namespace corvane {
namespace {

constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();
constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();

// The number at the start of a text, as the platform reads one: blanks and a sign may come first, anything
// may follow the digits.
std::optional<std::int64_t> leadingInteger(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const bool isNegative = text.starts_with('-');
    if (text.starts_with("+") && text.substr(1, 1) != "-") text.remove_prefix(1);
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) return isNegative ? kSmallest : kLargest;
    if (result.ec != std::errc()) return std::nullopt;
    return number;
}

}  // namespace

const PropertyList* PropertyList::find(std::string_view key) const {
    const auto* dictionary = get<Dictionary>();
    if (dictionary == nullptr) return nullptr;
    const auto found = dictionary->find(key);
    return found == dictionary->end() ? nullptr : &found->second;
}

std::optional<std::int64_t> PropertyList::integer() const {
    if (const auto* boolean = get<bool>()) return *boolean ? 1 : 0;
    if (const auto* number = get<std::int64_t>()) return *number;
    if (const auto* real = get<double>()) return truncated<std::int64_t>(*real);
    if (const auto* text = get<std::string>()) return leadingInteger(*text);
    return std::nullopt;
}

std::optional<double> PropertyList::number() const {
    if (const auto* real = get<double>()) return *real;
    if (const auto* number = get<std::int64_t>()) return static_cast<double>(*number);
    return std::nullopt;
}

}  // namespace corvane
