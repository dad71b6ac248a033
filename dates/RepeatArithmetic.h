// Calendar steps of repeat rules: the day that a weekly, monthly or yearly rule picks next.
//
// Every step runs in the user's calendar and time zone of the moment and keeps the wall-clock time. Weekdays
// are numbered 1 = Sunday ... 7 = Saturday. Numbers come as stored with the task: any value is safe.
#pragma once

#include <cstdint>
#include <span>

#include "platform/foundation/Date.h"

namespace corvane {

/// Day kinds of a monthly rule beyond the weekdays; the numbers are stored with the task.
inline constexpr std::uint64_t kDayOfMonth = 1000;
inline constexpr std::uint64_t kWorkingDay = 1001;  ///< Monday to Friday
inline constexpr std::uint64_t kWeekendDay = 1002;  ///< Saturday or Sunday

/// The ordinal that means the last; greater ones mean it too.
inline constexpr std::uint64_t kLastOrdinal = 5;

/// Whether the date's weekday is in the list; an empty list fits every date.
bool isAlignedWithWeeklyRepeatWeekdays(Date date, std::span<const std::uint64_t> weekdays);

/// Whether the date is the day of a monthly rule in its own month. A date with a fraction of a second never
/// fits, since the rule builds whole seconds; without a rule (0 as weekday or ordinal) every date does.
bool isAlignedWithMonthlyRepeatWeekday(Date date, std::uint64_t weekday, std::uint64_t ordinal);

/// The next date of a weekly rule: the next listed weekday in the date's own week, otherwise, `weeks` weeks
/// on, the next listed weekday in that week or else the first one from its start. Weeks start on the locale's
/// first weekday.
///
/// @param weeks       with 0 the search stays in the date's own week, so that the result may lie before it
/// @param onWeekdays  in any order; empty or the date's own weekday alone: only the weeks are added; nothing
///                    from 1 to 7: no day fits, and the date stays as it is
/// @return a day found from the start of a week has whole seconds: a fraction in `date` is dropped
Date dateByAddingWeeks(Date date, std::int64_t weeks, std::span<const std::uint64_t> onWeekdays);

/// The next date of a monthly rule: the matching day of `date`'s own month while that is still ahead,
/// otherwise the one `months` calendar months later.
///
/// @param onWeekday  a weekday or a day kind; any other number is no rule, only calendar months are added
/// @param ordinal    1 to 4 from the start of the month, 5 or more the last; 0 is no rule
/// @return a day that the rule chose has whole seconds: a fraction in `date` is dropped
Date dateByAddingMonths(Date date, std::int64_t months, std::uint64_t onWeekday, std::uint64_t ordinal);

/// The worker of `dateByAddingMonths`: the matching day in the month `months` calendar months later, be it
/// before or after the date's own day of the month.
Date matchingDateByAddingMonths(Date date, std::int64_t months, std::uint64_t onWeekday,
                                std::uint64_t ordinal);

/// The same day and wall-clock time `years` years later; 29 February becomes the 28th in a common year.
Date dateByAddingYears(Date date, std::int64_t years);

}  // namespace corvane
