// Days between two dates, counted by the calendar, and their texts.
//
// A count is the difference of two civil days in the device's time zone: times of day and daylight-saving
// changes play no part. It stays within 32 bits: dates more than 2,147,483,647 days apart count as that many.
#pragma once

#include <cstdint>
#include <string>

#include "platform/foundation/Date.h"

namespace corvane {

/// Days from the day of `sinceDate` to the day of `date`: positive when `date` is later.
std::int32_t daysLeftSinceDate(Date date, Date sinceDate);

/// "2 days ago", "Yesterday", "Today", "Tomorrow", "In 2 days" and so on, in the user's language.
///
/// @param includeTime  adds the time of `date` where the day is today or tomorrow ("Today at 14:00"), and
///                     nowhere else
std::u16string stringOfDaysLeftSinceDate(Date date, Date sinceDate, bool includeTime);

/// "3 days before", "1 day after", in the user's language; empty for two dates of one day.
std::u16string stringOfDaysDiffSinceDate(Date date, Date sinceDate);

}  // namespace corvane
