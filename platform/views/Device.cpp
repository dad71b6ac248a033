#include "platform/views/Device.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace corvane {
namespace {

// Takes the first part off `rest`; none when nothing is left.
std::optional<std::u16string_view> takePart(std::optional<std::u16string_view>& rest) {
    if (!rest) return std::nullopt;
    const std::size_t dot = rest->find(u'.');
    const std::u16string_view part = rest->substr(0, dot);
    rest = dot == std::u16string_view::npos ? std::nullopt : std::optional(rest->substr(dot + 1));
    return part;
}

// The digits of a number without leading zeros, so that numbers of any length compare; 0 is the empty text.
std::u16string_view significantDigits(std::u16string_view part) {
    const bool isNumber =
        std::ranges::all_of(part, [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
    if (!isNumber) return {};
    return part.substr(std::min(part.find_first_not_of(u'0'), part.size()));
}

int compareParts(std::u16string_view a, std::u16string_view b) {
    const std::u16string_view first = significantDigits(a);
    const std::u16string_view second = significantDigits(b);
    if (first.size() != second.size()) return first.size() < second.size() ? -1 : 1;
    return first.compare(second);
}

}  // namespace

int compareVersionsNumerically(std::u16string_view a, std::u16string_view b) {
    std::optional<std::u16string_view> restOfA = a;
    std::optional<std::u16string_view> restOfB = b;
    while (restOfA || restOfB) {
        const std::optional<std::u16string_view> partOfA = takePart(restOfA);
        const std::optional<std::u16string_view> partOfB = takePart(restOfB);
        if (!partOfA || !partOfB) return partOfA ? 1 : -1;
        if (const int order = compareParts(*partOfA, *partOfB); order != 0) return order;
    }
    return 0;
}

}  // namespace corvane
