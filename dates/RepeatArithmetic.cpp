#include "dates/RepeatArithmetic.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/foundation/Calendar.h"

namespace corvane {
namespace {

constexpr int kDaysPerWeek = 7;

bool contains(std::span<const std::uint64_t> weekdays, Weekday weekday) {
    return std::ranges::find(weekdays, static_cast<std::uint64_t>(weekday)) != weekdays.end();
}

Date dateOnDay(const Calendar& calendar, const cctz::civil_day& day, const cctz::civil_second& time) {
    return calendar.dateFromCivil(
        cctz::civil_second(day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()));
}

bool holdsWeekday(std::span<const std::uint64_t> weekdays) {
    return std::any_of(weekdays.begin(), weekdays.end(),
                       [](std::uint64_t day) { return day >= kSunday && day <= kSaturday; });
}

bool holdsListedDay(cctz::civil_day day, const cctz::civil_day& end,
                    std::span<const std::uint64_t> weekdays) {
    while (day < end && !contains(weekdays, Calendar::weekday(day))) ++day;
    return day < end;
}

// The first listed weekday from `date` on and before `end`, within a week. It steps from date to date, so
// that a time which one day skips stays moved on for the days after it, and counts the steps, since those at
// the far end of time do not get ahead.
std::optional<Date> firstListedDate(const Calendar& calendar, Date date, const cctz::civil_day& end,
                                    std::span<const std::uint64_t> weekdays) {
    if (!holdsListedDay(calendar.civilDay(date), end, weekdays)) return std::nullopt;  // spares the steps
    for (int step = 0; step < kDaysPerWeek; ++step) {
        const cctz::civil_day day = calendar.civilDay(date);
        if (day >= end) return std::nullopt;
        if (contains(weekdays, Calendar::weekday(day))) return date;
        date = calendar.dateByAddingDays(date, 1);
    }
    return std::nullopt;
}

// Days of the month by number. The last one is the fifth where the month has it.
int nthWeekday(const cctz::civil_month& month, Weekday weekday, std::uint64_t ordinal) {
    const Weekday firstOfMonth = Calendar::weekday(cctz::civil_day(month));
    const int first = 1 + (weekday - firstOfMonth + kDaysPerWeek) % kDaysPerWeek;
    if (ordinal < kLastOrdinal) return first + (static_cast<int>(ordinal) - 1) * kDaysPerWeek;
    const int fifth = first + 4 * kDaysPerWeek;
    return fifth <= Calendar::daysInMonth(month) ? fifth : fifth - kDaysPerWeek;
}

// The earlier of the n-th Saturday and the n-th Sunday, not the n-th weekend day: in a month that begins on a
// Saturday, the second is the 8th. Rules already stored mean this day.
int nthWeekendDay(const cctz::civil_month& month, std::uint64_t ordinal) {
    return std::min(nthWeekday(month, kSaturday, ordinal), nthWeekday(month, kSunday, ordinal));
}

int nthWorkingDay(const cctz::civil_month& month, std::uint64_t ordinal) {
    const bool isLast = ordinal >= kLastOrdinal;
    std::array<int, 5> days{};
    for (Weekday weekday = kMonday; weekday <= kFriday; ++weekday) {
        days[static_cast<std::size_t>(weekday - kMonday)] =
            nthWeekday(month, weekday, isLast ? kLastOrdinal : 1);
    }
    std::ranges::sort(days);
    return isLast ? days.back() : days[ordinal - 1];
}

int nthDayOfMonth(const cctz::civil_month& month, std::uint64_t ordinal) {
    return ordinal < kLastOrdinal ? static_cast<int>(ordinal) : Calendar::daysInMonth(month);
}

// None: these numbers are no rule.
std::optional<int> matchingDay(const cctz::civil_month& month, std::uint64_t onWeekday,
                               std::uint64_t ordinal) {
    if (ordinal == 0) return std::nullopt;
    if (onWeekday >= kSunday && onWeekday <= kSaturday) {
        return nthWeekday(month, static_cast<Weekday>(onWeekday), ordinal);
    }
    if (onWeekday == kDayOfMonth) return nthDayOfMonth(month, ordinal);
    if (onWeekday == kWorkingDay) return nthWorkingDay(month, ordinal);
    if (onWeekday == kWeekendDay) return nthWeekendDay(month, ordinal);
    return std::nullopt;
}

}  // namespace

bool isAlignedWithWeeklyRepeatWeekdays(Date date, std::span<const std::uint64_t> weekdays) {
    return weekdays.empty() || contains(weekdays, Calendar::current().weekday(date));
}

bool isAlignedWithMonthlyRepeatWeekday(Date date, std::uint64_t weekday, std::uint64_t ordinal) {
    return weekday == 0 || ordinal == 0 || date == matchingDateByAddingMonths(date, 0, weekday, ordinal);
}

Date dateByAddingWeeks(Date date, std::int64_t weeks, std::span<const std::uint64_t> onWeekdays) {
    const Calendar calendar = Calendar::current();
    const cctz::civil_second civil = calendar.civilSecond(date);
    const cctz::civil_day day(civil);
    const bool isOwnWeekdayAlone = onWeekdays.size() == 1 && contains(onWeekdays, Calendar::weekday(day));
    if (onWeekdays.empty() || isOwnWeekdayAlone) return calendar.dateByAddingWeeks(date, weeks);
    if (!holdsWeekday(onWeekdays)) return date;

    const cctz::civil_day startOfWeek = calendar.startOfWeek(day);
    const cctz::civil_day endOfWeek = startOfWeek + kDaysPerWeek;
    const Date nextDay = calendar.dateByAddingDays(date, 1);
    if (const auto later = firstListedDate(calendar, nextDay, endOfWeek, onWeekdays)) return *later;
    if (weeks != 0) return dateByAddingWeeks(calendar.dateByAddingWeeks(date, weeks), 0, onWeekdays);
    const Date firstDay = dateOnDay(calendar, startOfWeek, civil);
    return firstListedDate(calendar, firstDay, endOfWeek, onWeekdays).value_or(date);
}

Date dateByAddingMonths(Date date, std::int64_t months, std::uint64_t onWeekday, std::uint64_t ordinal) {
    const Date candidate = matchingDateByAddingMonths(date, 0, onWeekday, ordinal);
    if (candidate > date) return candidate;
    return matchingDateByAddingMonths(date, months, onWeekday, ordinal);
}

Date matchingDateByAddingMonths(Date date, std::int64_t months, std::uint64_t onWeekday,
                                std::uint64_t ordinal) {
    const Calendar calendar = Calendar::current();
    const Date inMonth = calendar.dateByAddingMonths(date, months);
    const cctz::civil_second civil = calendar.civilSecond(inMonth);
    const cctz::civil_month month(civil);
    const std::optional<int> day = matchingDay(month, onWeekday, ordinal);
    return day ? dateOnDay(calendar, cctz::civil_day(month) + (*day - 1), civil) : inMonth;
}

Date dateByAddingYears(Date date, std::int64_t years) {
    return Calendar::current().dateByAddingYears(date, years);
}

}  // namespace corvane
