// The repeat detail of a task, packed into one text: "ordinal,weekday" for a monthly rule, "2,4,6" for the
// weekdays of a weekly one.
//
// Numbers out of range are written as they come and filtered when they are read. A piece that is no number
// reads as 0.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The number that a text begins with: white space and a sign may come first, the reading stops at the first
/// other character. Beyond 64 bits its nearest end; 0 without digits.
std::int64_t integerValue(std::u16string_view text);

/// "ordinal,weekday", each as a signed number of 32 bits; none unless both are there.
std::optional<std::u16string> monthlyRepeatData(std::uint64_t ordinal, std::uint64_t weekday);

/// 1 to 5; 0 for every other number and unless the text has exactly two pieces.
std::uint64_t ordinalOfMonthlyRepeatData(std::optional<std::u16string_view> data);

/// At least 1, without an upper bound, since day kinds from 1000 up stand beside the weekdays; otherwise 0.
std::uint64_t weekdayOfMonthlyRepeatData(std::optional<std::u16string_view> data);

/// The weekdays in their order, joined by ","; none for no weekdays.
std::optional<std::u16string> weeklyRepeatData(std::span<const std::uint64_t> weekdays);

/// Every piece as a number, in order; the empty text has one piece, none has no piece.
std::vector<std::uint64_t> weekdaysOfWeeklyRepeatData(std::optional<std::u16string_view> data);

}  // namespace corvane
