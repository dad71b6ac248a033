// The words of the predicate language, recognised in any case, and the letters of names.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

enum class Keyword : std::uint8_t {
    kAnd,
    kOr,
    kNot,
    kAny,
    kAll,
    kNone,
    kIn,
    kBetween,
    kBeginsWith,
    kEndsWith,
    kContains,
    kLike,
    kMatches,
    kNil,
    kYes,
    kNo,
    kSelf,
    kTruePredicate,
    kFalsePredicate,
};

std::optional<Keyword> keywordFromText(std::u16string_view word);

/// Names of keys and variables: ASCII letters, digits and "_", no digit first.
constexpr bool isNameStart(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}
constexpr bool isNamePart(char16_t unit) { return isNameStart(unit) || (unit >= u'0' && unit <= u'9'); }

/// Whether two texts are the same but for the case of ASCII letters.
bool equalsIgnoringAsciiCase(std::u16string_view a, std::u16string_view b);

}  // namespace corvane
