#include "dates/RelativeDayTexts.h"

#include <algorithm>

#include "dates/DateTexts.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

constexpr std::int64_t kMaximumDays = 2147483647;  // so that the opposite of every count is one too

}  // namespace

std::int32_t daysLeftSinceDate(Date date, Date sinceDate) {
    const Calendar calendar = Calendar::current();
    const std::int64_t days = calendar.civilDay(date) - calendar.civilDay(sinceDate);
    return static_cast<std::int32_t>(std::clamp(days, -kMaximumDays, kMaximumDays));
}

// The five texts around today are keys of their own, so that a language can word each as a whole.
std::u16string stringOfDaysLeftSinceDate(Date date, Date sinceDate, bool includeTime) {
    const std::int64_t days = daysLeftSinceDate(date, sinceDate);
    if (days == -2) return localizedString("2 days ago");
    if (days == -1) return localizedString("Yesterday");
    if (days == 0 && includeTime)
        return stringWithFormat(localizedString("Today at %@"), {stringOfTime(date)});
    if (days == 0) return localizedString("Today");
    if (days == 1 && includeTime)
        return stringWithFormat(localizedString("Tomorrow at %@"), {stringOfTime(date)});
    if (days == 1) return localizedString("Tomorrow");
    if (days == 2) return localizedString("In 2 days");
    if (days < 0) return stringWithFormat(localizedString("%d days ago", -days), {-days});
    return stringWithFormat(localizedString("In %d days", days), {days});
}

std::u16string stringOfDaysDiffSinceDate(Date date, Date sinceDate) {
    const std::int64_t days = daysLeftSinceDate(date, sinceDate);
    if (days == 0) return {};
    if (days == -1) return localizedString("1 day before");
    if (days == 1) return localizedString("1 day after");
    if (days < 0) return stringWithFormat(localizedString("%d days before", -days), {-days});
    return stringWithFormat(localizedString("%d days after", days), {days});
}

}  // namespace corvane
