// Dates as people type them: ISO 8601, the user's locale's own forms, and words.
//
// "2024-03-05", "2024-03-05T14:00", "today", "tomorrow 2pm", "friday at 14:00", "next monday", "+3d", "+2w",
// "in 3 days", "Mar 5", "05.03.24" and the time of day alone. English words are read in every locale, names
// of weekdays and the words for today and its neighbours in the user's language too. Case and accents do not
// matter. Dates are civil ones in the device's time zone of the moment.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/Date.h"

namespace corvane {

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const TimeOfDay&) const = default;
};

struct DateFromWords {
    Date date;             ///< without a time: the day's first instant
    bool hasTime = false;  ///< a time of day was given

    bool operator==(const DateFromWords&) const = default;
};

/// Reads a day, a time of day or both. A weekday means the next one after today; "next" before it, the one of
/// the coming week by the locale's first weekday. A day without a year is the next such day from today on, a
/// time alone is today's. A time that the zone skips moves on by the gap.
/// @return the date, or why there is none: one line, UTF-8
std::variant<DateFromWords, std::string> dateFromWords(std::u16string_view text);

/// The same for a due date that may be taken away: "none" and "never" are no date.
std::variant<std::optional<DateFromWords>, std::string> dueFromWords(std::u16string_view text);

/// Reads a time of day alone: "14:00", "14:00:30", "2pm", "2:30 pm", "noon", or as the user's locale writes
/// it.
std::optional<TimeOfDay> timeOfDayFromWords(std::u16string_view text);

/// The text as words are compared: without accents and case, blanks at its ends gone, others single.
std::u16string foldedWords(std::u16string_view text);

}  // namespace corvane
