#include "dates/DateBasics.h"

#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"

namespace corvane {

// The day is counted first and its start looked up then: adding days to the start of today would carry the
// 01:00 of a skipped midnight into the next days.
Date dateOfTodayMidnightWithDaysOffset(std::int32_t offset) {
    const Calendar calendar = Calendar::current();
    return calendar.startOfDay(calendar.civilDay(now()) + offset);
}

Date dateByResettingTimeToMidnight(Date date) {
    const Calendar calendar = Calendar::current();
    return calendar.startOfDay(calendar.civilDay(date));
}

Date dateByAddingDays(Date date, std::int64_t days) {
    return Calendar::current().dateByAddingDays(date, days);
}

Date dateByAddingDays(Date date, std::int64_t days, std::int32_t withHour, std::int32_t minute) {
    const Calendar calendar = Calendar::current();
    const cctz::civil_day day = calendar.civilDay(calendar.dateByAddingDays(date, days));
    return calendar.dateFromCivil(cctz::civil_second(day.year(), day.month(), day.day(), withHour, minute));
}

}  // namespace corvane
