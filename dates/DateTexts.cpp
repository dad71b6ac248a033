#include "dates/DateTexts.h"

#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Locale.h"

namespace corvane {

std::u16string stringOfTime(Date date) {
    const Locale& locale = Locale::current();
    return locale.stringFromDate(date, locale.shortTimePattern(), Calendar::current());
}

std::u16string stringOfDate(Date date) {
    const Calendar calendar = Calendar::current();
    const Locale& locale = Locale::current();
    const bool isThisYear = calendar.year(date) == calendar.year(now());
    const std::u16string& pattern = locale.patternForSkeleton(isThisYear ? "EEEMMMd" : "EEEMMMdyyyy");
    return locale.stringFromDate(date, pattern, calendar);
}

std::u16string stringOfDateTime(Date date) { return stringOfDate(date) + u", " + stringOfTime(date); }

}  // namespace corvane
