#include "platform/foundation/Calendar.h"

#include <algorithm>
#include <cmath>

#include "platform/foundation/Locale.h"
#include "platform/foundation/TimeZone.h"

namespace corvane {
namespace {

constexpr std::int64_t kLastYear = 20'000'000;
constexpr std::int64_t kLastMonths = kLastYear * 12;
constexpr std::int64_t kLastDays = kLastYear * 366;
constexpr double kLastSeconds = (20e6 - 2002) * 365.2425 * 86'400;  // before and after 2001
constexpr std::int64_t kSecondsFrom1970To2001 = 978'307'200;

using Seconds = cctz::time_point<cctz::seconds>;

// A date in whole seconds and the rest, which every step carries along.
struct SplitDate {
    Seconds seconds;
    double fraction;  ///< 0 to 1
};

SplitDate splitDate(Date date) {
    const double value = date.time_since_epoch().count();
    const double bounded = std::isnan(value) ? 0 : std::clamp(value, -kLastSeconds, kLastSeconds);
    const double whole = std::floor(bounded);
    return {Seconds(cctz::seconds(static_cast<std::int64_t>(whole) + kSecondsFrom1970To2001)),
            bounded - whole};
}

Date joinedDate(const SplitDate& split) {
    const std::int64_t sinceReference = split.seconds.time_since_epoch().count() - kSecondsFrom1970To2001;
    return Date(TimeInterval(static_cast<double>(sinceReference) + split.fraction));
}

cctz::civil_second bounded(const cctz::civil_second& civil) {
    return std::clamp(civil, cctz::civil_second(-kLastYear),
                      cctz::civil_second(kLastYear, 12, 31, 23, 59, 59));
}

Seconds secondsFromCivil(const cctz::civil_second& civil, const cctz::time_zone& zone) {
    // In a gap the offset before it moves the time on, at a repeated time it gives the first.
    return zone.lookup(bounded(civil)).pre;
}

// The day of `month`, or its last day, at the time of day of `time`.
cctz::civil_second dayOfMonth(const cctz::civil_month& month, const cctz::civil_second& time) {
    const int day = std::min(time.day(), Calendar::daysInMonth(month));
    return cctz::civil_second(month.year(), month.month(), day, time.hour(), time.minute(), time.second());
}

}  // namespace

Calendar Calendar::current() { return {currentTimeZone(), &Locale::current()}; }

Weekday Calendar::firstWeekday() const {
    return locale_ == nullptr ? firstWeekday_ : locale_->firstWeekday();
}

cctz::civil_second Calendar::civilSecond(Date date) const { return zone_.lookup(splitDate(date).seconds).cs; }

Weekday Calendar::weekday(const cctz::civil_day& day) {
    // cctz counts from Monday = 0.
    return (static_cast<int>(cctz::get_weekday(day)) + 1) % 7 + kSunday;
}

int Calendar::daysInMonth(const cctz::civil_month& month) {
    return static_cast<int>(cctz::civil_day(month + 1) - cctz::civil_day(month));
}

Date Calendar::dateFromCivil(const cctz::civil_second& civil) const {
    return joinedDate({secondsFromCivil(civil, zone_), 0});
}

Date Calendar::startOfDay(const cctz::civil_day& day) const {
    const cctz::time_zone::civil_lookup midnight = zone_.lookup(bounded(cctz::civil_second(day)));
    const bool isSkipped = midnight.kind == cctz::time_zone::civil_lookup::SKIPPED;
    return joinedDate({isSkipped ? midnight.trans : midnight.pre, 0});
}

cctz::civil_day Calendar::startOfWeek(const cctz::civil_day& day) const {
    return day - (weekday(day) - firstWeekday() + 7) % 7;
}

Date Calendar::dateByAddingDays(Date date, std::int64_t days) const {
    const SplitDate split = splitDate(date);
    if (days == 0) return joinedDate(split);
    const std::int64_t seconds = std::clamp(days, -kLastDays, kLastDays) * 86'400;
    const cctz::civil_second civil = zone_.lookup(split.seconds).cs + seconds;
    return joinedDate({secondsFromCivil(civil, zone_), split.fraction});
}

Date Calendar::dateByAddingWeeks(Date date, std::int64_t weeks) const {
    return dateByAddingDays(date, std::clamp(weeks, -kLastDays, kLastDays) * 7);
}

Date Calendar::dateByAddingMonths(Date date, std::int64_t months) const {
    const SplitDate split = splitDate(date);
    if (months == 0) return joinedDate(split);
    const cctz::civil_second civil = zone_.lookup(split.seconds).cs;
    const cctz::civil_month month = cctz::civil_month(civil) + std::clamp(months, -kLastMonths, kLastMonths);
    return joinedDate({secondsFromCivil(dayOfMonth(month, civil), zone_), split.fraction});
}

Date Calendar::dateByAddingYears(Date date, std::int64_t years) const {
    return dateByAddingMonths(date, std::clamp(years, -kLastYear, kLastYear) * 12);
}

}  // namespace corvane
