// Midnights and day steps, in the user's calendar and time zone of the moment.
//
// Midnight of a day is its first instant, also where a zone skips 00:00 or has it twice. Counts and dates of
// any size are safe: the calendar clamps what lies millions of years away.
#pragma once

#include <cstdint>

#include "platform/foundation/Date.h"

namespace corvane {

/// The first instant of the day `offset` days after today; 0 is today, -1 yesterday.
Date dateOfTodayMidnightWithDaysOffset(std::int32_t offset);

/// The first instant of the date's own local day.
Date dateByResettingTimeToMidnight(Date date);

/// The same wall-clock time, fraction of a second included, `days` days later; negative goes back.
Date dateByAddingDays(Date date, std::int64_t days);

/// A time of day, to the whole minute, `days` days later.
///
/// @param withHour, minute  not checked: 24 or more hours, 60 or more minutes and negative ones carry over
Date dateByAddingDays(Date date, std::int64_t days, std::int32_t withHour, std::int32_t minute);

}  // namespace corvane
