// Dates in the synchronisation form of RFC 3339: "2024-03-05T14:07:09.250Z", always 24 characters.
//
// Reading is strict: four digits of the year, two each of month, day, hour (00 to 23), minute and second (00
// to 59), three of milliseconds, a date that the proleptic Gregorian calendar has, and nothing else. Writing
// rounds to the nearest millisecond and never fails: a date before year 0 is written as the first moment that
// the form can tell, one after year 9999 as the last, and one that is no number as 2001-01-01 00:00 UTC.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Calendar.h"
#include "platform/foundation/Date.h"

namespace corvane {

/// Reads and writes the form with the wall-clock digits of one zone, fixed for life.
///
/// The text ends in "Z" whatever the zone. Threads may share a formatter: it takes its own lock in every
/// call.
class Rfc3339Formatter {
  public:
    explicit Rfc3339Formatter(cctz::time_zone zone) : calendar_(zone, kSunday) {}

    /// @return none when the text has not exactly the form
    std::optional<Date> dateFromString(std::u16string_view text) const;
    std::u16string stringFromDate(Date date) const;

  private:
    Calendar calendar_;
    mutable std::mutex mutex_;
};

/// Sets up the two formatters of the process; a program calls it once at its start. The local one takes the
/// device's zone of this moment and keeps it. Where nobody called it, the first use of a formatter does so.
void load();

/// UTC, as the synchronisation service has it.
std::optional<Date> dateFromRfc3339(std::u16string_view text);
std::u16string stringOfRfc3339(Date date);

/// The wall-clock time of the zone in which the process started. The text still ends in "Z": stored texts of
/// this kind are read back by the same operation.
std::optional<Date> dateLocalizedFromRfc3339(std::u16string_view text);
std::u16string stringOfLocalizedRfc3339(Date date);

}  // namespace corvane
