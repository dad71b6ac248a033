// Repeat rules in words, both ways: "every day", "every 2 weeks on Mon, Fri", "every month on the last
// working day".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "model/GTask.h"

namespace corvane {

/// A rule as a task stores it.
struct RepeatRule {
    std::int32_t kind = kNoRepeat;
    std::int32_t interval = 1;
    std::vector<std::uint64_t> weekdays = {};  ///< of a weekly rule, 1 Sunday ... 7 Saturday
    std::uint64_t ordinal = 0;                 ///< of a monthly rule; 0: the same date every month
    std::uint64_t dayKind = 0;                 ///< of a monthly rule: a weekday or day kind

    bool operator==(const RepeatRule&) const = default;
};

/// Reads English words, with names of weekdays also in the user's language, and what repeatInWords gives in
/// the user's language; "none" is a rule too.
/// @return the rule, or why there is none: one line, UTF-8
std::variant<RepeatRule, std::string> repeatFromWords(std::u16string_view text);

/// In the user's language; repeatFromWords reads it back. A stored number that no rule has is told as an
/// unknown rule.
std::u16string repeatInWords(const RepeatRule& rule);

/// The rule of a task, numbers that mean nothing left out; both weekly kinds read as one.
RepeatRule repeatOfTask(const GTask& task);

}  // namespace corvane
