// The user's calendar: Gregorian civil arithmetic in a time zone.
//
// A civil time that a zone skips moves on by the gap; one that comes twice means the first. Adding days,
// weeks, months or years keeps the wall-clock time and the fraction of a second. Counts and dates beyond
// 20 million years are clamped; a date that is no number counts as the reference date.
#pragma once

#include <cctz/civil_time.h>
#include <cctz/time_zone.h>

#include <cstdint>

#include "platform/foundation/Date.h"

namespace corvane {

/// Weekday numbers: 1 = Sunday ... 7 = Saturday.
using Weekday = int;
inline constexpr Weekday kSunday = 1;
inline constexpr Weekday kMonday = 2;
inline constexpr Weekday kFriday = 6;
inline constexpr Weekday kSaturday = 7;

class Locale;

class Calendar {
  public:
    /// The calendar of this moment: the device's zone, the locale's first weekday. Cheap: cached, and renewed
    /// when zone or locale have changed.
    static Calendar current();

    Calendar(cctz::time_zone zone, Weekday firstWeekday) : zone_(zone), firstWeekday_(firstWeekday) {}

    const cctz::time_zone& timeZone() const { return zone_; }
    Weekday firstWeekday() const;

    /// Civil fields of an instant; the fraction of a second is dropped.
    cctz::civil_second civilSecond(Date date) const;
    cctz::civil_day civilDay(Date date) const { return cctz::civil_day(civilSecond(date)); }
    cctz::year_t year(Date date) const { return civilSecond(date).year(); }
    Weekday weekday(Date date) const { return weekday(civilDay(date)); }
    static Weekday weekday(const cctz::civil_day& day);
    static int daysInMonth(const cctz::civil_month& month);

    Date dateFromCivil(const cctz::civil_second& civil) const;

    /// The first instant of a day, also where 00:00 is skipped or comes twice.
    Date startOfDay(const cctz::civil_day& day) const;

    /// The first day of the week that holds `day`, by the first weekday.
    cctz::civil_day startOfWeek(const cctz::civil_day& day) const;

    // Steps; the day that a shorter month lacks becomes its last day.
    Date dateByAddingDays(Date date, std::int64_t days) const;
    Date dateByAddingWeeks(Date date, std::int64_t weeks) const;
    Date dateByAddingMonths(Date date, std::int64_t months) const;
    Date dateByAddingYears(Date date, std::int64_t years) const;

  private:
    Calendar(cctz::time_zone zone, const Locale* locale) : zone_(zone), locale_(locale) {}

    cctz::time_zone zone_;
    const Locale* locale_ = nullptr;  ///< asked for the first weekday only when somebody needs it
    Weekday firstWeekday_ = kSunday;  ///< where there is no locale
};

}  // namespace corvane
