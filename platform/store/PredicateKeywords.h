// The words of the predicate language. They are recognised in any case.
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

/// Whether two texts are the same but for the case of ASCII letters.
bool equalsIgnoringAsciiCase(std::u16string_view a, std::u16string_view b);

}  // namespace corvane
