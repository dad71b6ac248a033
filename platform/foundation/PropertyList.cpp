#include "platform/foundation/PropertyList.h"

#include "platform/foundation/LeadingInteger.h"
#include "platform/foundation/Truncation.h"

namespace corvane {

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
