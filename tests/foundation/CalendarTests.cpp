#include "platform/foundation/Calendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>

#include "support/TestEnvironment.h"

namespace corvane {
namespace {

std::string utcText(Date date) {
    const TestEnvironment environment({.timeZone = "UTC"});
    return civilText(date);
}

cctz::civil_day dayOf(const char* text) {
    int year = 0, month = 0, day = 0;
    std::sscanf(text, "%d-%d-%d", &year, &month, &day);
    return cctz::civil_day(year, month, day);
}

TEST(Calendar, StartsADayAtItsFirstInstant) {
    constexpr std::tuple<const char*, const char*, const char*, const char*> kRows[] = {
        {"midnight skipped",                          "America/Sao_Paulo", "2018-11-04", "2018-11-04 03:00"},
        {"midnight inside a gap from 23:30",          "America/Toronto",   "1919-03-31", "1919-03-31 04:30"},
        {"midnight twice, set back to it at 01:00",   "America/Havana",    "2018-11-04", "2018-11-04 04:00"},
        {"midnight twice, set back over it at 00:01", "America/St_Johns",  "2010-11-07", "2010-11-07 02:30"},
        {"last hour twice, midnight once",            "America/Sao_Paulo", "2018-02-18", "2018-02-18 03:00"},
        {"day that the zone left out",                "Pacific/Apia",      "2011-12-30", "2011-12-30 10:00"},
        {"day after it",                              "Pacific/Apia",      "2011-12-31", "2011-12-30 10:00"},
    };
    for (const auto& [what, zone, day, utc] : kRows) {
        SCOPED_TRACE(what);
        const TestEnvironment environment({.timeZone = zone});
        EXPECT_EQ(utcText(Calendar::current().startOfDay(dayOf(day))), utc);
    }
}

TEST(Calendar, MovesSkippedTimesOnAndTakesTheFirstOfRepeatedOnes) {
    constexpr std::tuple<const char*, const char*, const char*, const char*> kRows[] = {
        {"Europe/Berlin",       "2024-03-31 02:30", "2024-03-31 01:30", "2024-03-31 03:30"},
        {"Europe/Berlin",       "2024-10-27 02:30", "2024-10-27 00:30", "2024-10-27 02:30"},
        {"Australia/Lord_Howe", "2024-10-06 02:15", "2024-10-05 15:45", "2024-10-06 02:45"},
        {"Pacific/Apia",        "2011-12-30 09:00", "2011-12-30 19:00", "2011-12-31 09:00"},
    };
    for (const auto& [zone, civil, utc, shown] : kRows) {
        SCOPED_TRACE(std::string(zone) + " " + civil);
        const TestEnvironment environment({.timeZone = zone});
        EXPECT_EQ(utcText(at(civil)), utc);
        EXPECT_EQ(civilText(at(civil)), shown);
    }
}

TEST(Calendar, KeepsTheWallClockTimeOverDays) {
    struct Row {
        const char* zone;
        const char* from;
        int days;
        const char* expected;
        double hours;
    };
    constexpr Row kRows[] = {
        {"America/New_York",    "2024-03-09 09:00",        1, "2024-03-10 09:00",        23  },
        {"Australia/Lord_Howe", "2024-04-06 09:00",        1, "2024-04-07 09:00",        24.5},
        {"Pacific/Apia",        "2011-12-29 09:00",        2, "2011-12-31 09:00",        24  },
        {"UTC",                 "2024-02-28 23:59:59.250", 2, "2024-03-01 23:59:59.250", 48  },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.zone) + " " + row.from);
        const TestEnvironment environment({.timeZone = row.zone});
        const Date from = at(row.from);
        const Date result = Calendar::current().dateByAddingDays(from, row.days);
        EXPECT_EQ(civilText(result), row.expected);
        EXPECT_EQ((result - from).count(), row.hours * 3600);
    }
}

TEST(Calendar, LeavesADateThatIsMovedByNothing) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    const Date secondHalfPastTwo = at("2024-10-27 02:30") + TimeInterval(3600.25);
    const Calendar calendar = Calendar::current();
    EXPECT_EQ(calendar.dateByAddingDays(secondHalfPastTwo, 0), secondHalfPastTwo);
    EXPECT_EQ(calendar.dateByAddingMonths(secondHalfPastTwo, 0), secondHalfPastTwo);
}

TEST(Calendar, TakesTheLastDayOfAShorterMonth) {
    constexpr std::tuple<const char*, std::int64_t, const char*> kRows[] = {
        {"2023-01-31 09:00:00.500", 1,             "2023-02-28 09:00:00.500"},
        {"2024-02-29 09:00",        12,            "2025-02-28 09:00"       },
        {"2024-03-31 09:00",        -1,            "2024-02-29 09:00"       },
        {"2024-02-29 02:30",        13 + 12 * 400, "2425-03-29 02:30"       },
    };
    const TestEnvironment environment({.timeZone = "Europe/London"});
    for (const auto& [from, months, expected] : kRows) {
        EXPECT_EQ(civilText(Calendar::current().dateByAddingMonths(at(from), months)), expected) << from;
    }
    EXPECT_EQ(civilText(Calendar::current().dateByAddingYears(at("2024-02-29"), 1)), "2025-02-28");
}

TEST(Calendar, BeginsTheWeekByTheLocale) {
    constexpr std::tuple<const char*, Weekday, const char*> kRows[] = {
        {"ar_EG", kSaturday, "2024-03-02"},
        {"en_US", kSunday,   "2024-03-03"},
        {"de_DE", kMonday,   "2024-03-04"},
        {"dv_MV", kFriday,   "2024-03-01"},
    };
    const cctz::civil_day wednesday(2024, 3, 6);
    for (const auto& [locale, first, startOfWeek] : kRows) {
        SCOPED_TRACE(locale);
        const TestEnvironment environment({.locale = locale});
        EXPECT_EQ(Calendar::current().firstWeekday(), first);
        const cctz::civil_day start = dayOf(startOfWeek);
        EXPECT_EQ(Calendar::current().startOfWeek(wednesday), start);
        EXPECT_EQ(Calendar::current().startOfWeek(start), start);
        EXPECT_EQ(Calendar::current().startOfWeek(start - 1), start - 7);
    }
}

TEST(Calendar, SplitsInstantsBeforeTheReferenceDateDownwards) {
    const Calendar calendar(cctz::utc_time_zone(), kSunday);
    EXPECT_EQ(calendar.civilSecond(Date(TimeInterval(-0.25))), cctz::civil_second(2000, 12, 31, 23, 59, 59));
    EXPECT_EQ(calendar.dateByAddingDays(Date(TimeInterval(-0.25)), 1), Date(TimeInterval(86'399.75)));
}

TEST(Calendar, ClampsWhatNoCalendarReaches) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double kDates[] = {0, kInfinity, -kInfinity, std::nan(""), 1e300, -1e300, 9.3e18, -6.4e14};
    constexpr std::int64_t kCounts[] = {std::numeric_limits<std::int64_t>::min(), -1, 0, 1,
                                        std::numeric_limits<std::int64_t>::max()};
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    const Calendar calendar = Calendar::current();
    const auto isInRange = [&calendar](Date date) { return std::abs(calendar.year(date)) <= 20'000'001; };
    for (const double seconds : kDates) {
        for (const std::int64_t count : kCounts) {
            SCOPED_TRACE(testing::Message() << seconds << " plus " << count);
            const Date date{TimeInterval(seconds)};
            EXPECT_TRUE(isInRange(calendar.dateByAddingDays(date, count)));
            EXPECT_TRUE(isInRange(calendar.dateByAddingWeeks(date, count)));
            EXPECT_TRUE(isInRange(calendar.dateByAddingMonths(date, count)));
            EXPECT_TRUE(isInRange(calendar.dateByAddingYears(date, count)));
            EXPECT_TRUE(isInRange(calendar.startOfDay(cctz::civil_day(count, 2, 3))));
        }
    }
    EXPECT_EQ(calendar.dateByAddingDays(Date(TimeInterval(std::nan(""))), 0), Date());
}

}  // namespace
}  // namespace corvane
