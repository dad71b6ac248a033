// Date steps and date texts, each beside the same work by ICU or cctz with objects that are kept.
#include <benchmark/benchmark.h>
#include <cctz/time_zone.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <array>
#include <memory>
#include <random>

#include "dates/DateBasics.h"
#include "dates/DateTexts.h"
#include "dates/RelativeDayTexts.h"
#include "dates/RepeatArithmetic.h"
#include "dates/Rfc3339.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

constexpr const char* kZone = "America/New_York";
constexpr double kMillisecondsPerSecond = 1000;

// The clock stands still on 2024-03-05 12:00 UTC; dates lie within 400 days of it.
constexpr Date kNow{TimeInterval(731332800)};

Environment environment(std::string zone) {
    Environment result;
    result.now = [] { return kNow; };
    result.timeZone = std::move(zone);
    result.locale = "en_US";
    return result;
}

// More dates than one, so that no run lives on what the last call left in a cache.
class Dates {
  public:
    explicit Dates(double seconds = 400.0 * 86'400) {
        std::mt19937_64 random(7);
        std::uniform_real_distribution<double> offsets(-seconds, seconds);
        for (Date& date : dates_) date = kNow + TimeInterval(offsets(random));
    }

    Date next() { return dates_[++position_ % dates_.size()]; }

  private:
    std::array<Date, 64> dates_{};
    std::size_t position_ = 0;
};

template <typename Operation>
void measure(benchmark::State& state, Operation operation, Dates dates = Dates()) {
    const EnvironmentScope scope(environment(kZone));
    for ([[maybe_unused]] auto step : state) benchmark::DoNotOptimize(operation(dates.next()));
}

UDate icuDate(Date date) { return secondsSince1970(date) * kMillisecondsPerSecond; }

icu::GregorianCalendar icuCalendar() {
    UErrorCode status = U_ZERO_ERROR;
    return {icu::TimeZone::createTimeZone(kZone), icu::Locale::getUS(), status};
}

// The calendar is kept; only the work on a date counts.
template <typename Operation>
void measureIcu(benchmark::State& state, Operation operation) {
    icu::GregorianCalendar calendar = icuCalendar();
    UErrorCode status = U_ZERO_ERROR;
    measure(state, [&](Date date) {
        calendar.setTime(icuDate(date), status);
        operation(calendar, status);
        return calendar.getTime(status);
    });
}

void clearTime(icu::Calendar& calendar) {
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND}) {
        calendar.set(field, 0);
    }
}

void addDay(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingDays(date, 1); });
}
void addDayByIcu(benchmark::State& state) {
    measureIcu(state,
               [](icu::Calendar& calendar, UErrorCode& status) { calendar.add(UCAL_DATE, 1, status); });
}
void addDayByCctz(benchmark::State& state) {
    cctz::time_zone zone;
    cctz::load_time_zone(kZone, &zone);
    measure(state, [&](Date date) {
        const auto seconds = static_cast<std::int64_t>(secondsSince1970(date));
        const cctz::civil_second civil =
            cctz::convert(cctz::time_point<cctz::seconds>(cctz::seconds(seconds)), zone);
        return cctz::convert(civil + 86'400, zone);
    });
}
BENCHMARK(addDay);
BENCHMARK(addDayByIcu);
BENCHMARK(addDayByCctz);

void midnight(benchmark::State& state) {
    measure(state, [](Date date) { return dateByResettingTimeToMidnight(date); });
}
void midnightByIcu(benchmark::State& state) {
    measureIcu(state, [](icu::Calendar& calendar, UErrorCode&) { clearTime(calendar); });
}
void midnightOfTomorrow(benchmark::State& state) {
    measure(state, [](Date) { return dateOfTodayMidnightWithDaysOffset(1); });
}
// The zone of the system's settings has to be looked after for changes.
void midnightInTheSystemsZone(benchmark::State& state) {
    const EnvironmentScope scope(environment(""));
    Dates dates;
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(dateByResettingTimeToMidnight(dates.next()));
    }
}
BENCHMARK(midnight);
BENCHMARK(midnightByIcu);
BENCHMARK(midnightOfTomorrow);
BENCHMARK(midnightInTheSystemsZone);

constexpr std::array<std::uint64_t, 0> kNoWeekdays{};
constexpr std::array<std::uint64_t, 3> kSeveralWeekdays{2, 4, 6};
constexpr std::array<std::uint64_t, 2> kOneWeekday{3, 3};  // twice, so that the search runs

void addWeek(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingWeeks(date, 1, kNoWeekdays); });
}
void addWeekOnWeekdays(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingWeeks(date, 1, kSeveralWeekdays); });
}
void addWeekOnOneWeekday(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingWeeks(date, 1, kOneWeekday); });
}
void addWeekByIcu(benchmark::State& state) {
    measureIcu(state, [](icu::Calendar& calendar, UErrorCode& status) {
        calendar.add(UCAL_WEEK_OF_YEAR, 1, status);
    });
}
BENCHMARK(addWeek);
BENCHMARK(addWeekOnWeekdays);
BENCHMARK(addWeekOnOneWeekday);
BENCHMARK(addWeekByIcu);

void addMonth(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingMonths(date, 1, 0, 0); });
}
void addMonthByIcu(benchmark::State& state) {
    measureIcu(state,
               [](icu::Calendar& calendar, UErrorCode& status) { calendar.add(UCAL_MONTH, 1, status); });
}
void nthWeekday(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingMonths(date, 1, 5, 2); });
}
void lastWorkingDay(benchmark::State& state) {
    measure(state, [](Date date) { return dateByAddingMonths(date, 1, kWorkingDay, kLastOrdinal); });
}
// One candidate only; the rule needs one or two.
void nthWeekdayByIcu(benchmark::State& state) {
    measureIcu(state, [](icu::Calendar& calendar, UErrorCode& status) {
        calendar.add(UCAL_MONTH, 1, status);
        calendar.set(UCAL_DAY_OF_WEEK, UCAL_THURSDAY);
        calendar.set(UCAL_DAY_OF_WEEK_IN_MONTH, 2);
    });
}
BENCHMARK(addMonth);
BENCHMARK(addMonthByIcu);
BENCHMARK(nthWeekday);
BENCHMARK(lastWorkingDay);
BENCHMARK(nthWeekdayByIcu);

void formatTime(benchmark::State& state) { measure(state, stringOfTime); }
void formatDate(benchmark::State& state) { measure(state, stringOfDate); }
void formatTimeByIcu(benchmark::State& state) {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(u"h:mm a", icu::Locale::getUS(), status);
    format.adoptTimeZone(icu::TimeZone::createTimeZone(kZone));
    measure(state, [&](Date date) {
        icu::UnicodeString text;
        return format.format(icuDate(date), text).length();
    });
}
BENCHMARK(formatTime);
BENCHMARK(formatDate);
BENCHMARK(formatTimeByIcu);

// Due dates of one day, today; the row's own text then holds the time.
void rowTextOfToday(benchmark::State& state) {
    constexpr bool kIncludeTime = true;
    measure(
        state, [](Date date) { return stringOfDaysLeftSinceDate(date, kNow, kIncludeTime); },
        Dates(3.0 * 3600));
}
void rowTextOfAnyDay(benchmark::State& state) {
    constexpr bool kIncludeTime = true;
    measure(state, [](Date date) { return stringOfDaysLeftSinceDate(date, kNow, kIncludeTime); });
}
BENCHMARK(rowTextOfToday);
BENCHMARK(rowTextOfAnyDay);

void writeRfc3339(benchmark::State& state) { measure(state, stringOfRfc3339); }
void writeLocalizedRfc3339(benchmark::State& state) { measure(state, stringOfLocalizedRfc3339); }
void readRfc3339(benchmark::State& state) {
    const std::u16string text = u"2024-03-05T14:07:09.250Z";
    measure(state, [&](Date) { return dateFromRfc3339(text); });
}
void readLocalizedRfc3339(benchmark::State& state) {
    const std::u16string text = u"2024-03-05T14:07:09.250Z";
    measure(state, [&](Date) { return dateLocalizedFromRfc3339(text); });
}
BENCHMARK(writeRfc3339);
BENCHMARK(writeLocalizedRfc3339);
BENCHMARK(readRfc3339);
BENCHMARK(readLocalizedRfc3339);

std::unique_ptr<icu::SimpleDateFormat> icuRfc3339() {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(u"yyyy'-'MM'-'dd'T'HH':'mm':'ss.SSS'Z'",
                                                          icu::Locale("en_US_POSIX"), status);
    format->adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
    return format;
}
void writeRfc3339ByIcu(benchmark::State& state) {
    const auto format = icuRfc3339();
    measure(state, [&](Date date) {
        icu::UnicodeString text;
        return format->format(icuDate(date), text).length();
    });
}
void readRfc3339ByIcu(benchmark::State& state) {
    const auto format = icuRfc3339();
    UErrorCode status = U_ZERO_ERROR;
    measure(state, [&](Date) { return format->parse(u"2024-03-05T14:07:09.250Z", status); });
}
void writeRfc3339ByCctz(benchmark::State& state) {
    const cctz::time_zone utc = cctz::utc_time_zone();
    measure(state, [&](Date date) {
        const auto milliseconds = static_cast<std::int64_t>(icuDate(date));
        const cctz::time_point<std::chrono::milliseconds> point{std::chrono::milliseconds(milliseconds)};
        return cctz::format("%E4Y-%m-%dT%H:%M:%E3SZ", point, utc);
    });
}
BENCHMARK(writeRfc3339ByIcu);
BENCHMARK(readRfc3339ByIcu);
BENCHMARK(writeRfc3339ByCctz);

}  // namespace
}  // namespace corvane
