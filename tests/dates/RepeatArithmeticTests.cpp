#include "dates/RepeatArithmetic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/TestEnvironment.h"

namespace corvane {
namespace {

constexpr std::uint64_t kHuge = std::numeric_limits<std::uint64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

using Weekdays = std::vector<std::uint64_t>;

// 2024-03-03 is a Sunday. Every time of day here is 10:00.
TEST(WeeklyRule, TakesTheNextListedDay) {
    struct Row {
        const char* what;
        const char* from;
        std::int64_t weeks;
        Weekdays weekdays;
        const char *sundayFirst, *mondayFirst, *saturdayFirst;
    };
    const Row rows[] = {
        {"ahead in the week",         "2024-03-06", 1,  {6, 2}, "2024-03-08", "2024-03-08", "2024-03-08"},
        {"first of next week",        "2024-03-08", 1,  {2, 6}, "2024-03-11", "2024-03-11", "2024-03-11"},
        {"third week",                "2024-03-07", 2,  {3, 5}, "2024-03-19", "2024-03-19", "2024-03-19"},
        {"first weekday decides",     "2024-03-09", 2,  {1, 4}, "2024-03-17", "2024-03-10", "2024-03-10"},
        {"first weekday decides",     "2024-03-08", 3,  {6, 7}, "2024-03-09", "2024-03-09", "2024-03-23"},
        {"back in the same week",     "2024-03-06", 0,  {2, 3}, "2024-03-04", "2024-03-04", "2024-03-04"},
        {"back to its start",         "2024-03-06", 0,  {1},    "2024-03-03", "2024-03-10", "2024-03-03"},
        {"weeks back, over new year", "2024-01-03", -1, {2},    "2023-12-25", "2023-12-25", "2023-12-25"},
    };
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    const auto next = [&](const Row& row, const char* locale) {
        environment->locale = locale;
        const Date from = at(row.from + std::string(" 10:00"));
        return civilText(dateByAddingWeeks(from, row.weeks, row.weekdays));
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.what) + " from " + row.from);
        EXPECT_EQ(next(row, "en_US"), row.sundayFirst + std::string(" 10:00"));
        EXPECT_EQ(next(row, "de_DE"), row.mondayFirst + std::string(" 10:00"));
        EXPECT_EQ(next(row, "ar_EG"), row.saturdayFirst + std::string(" 10:00"));
    }
}

TEST(WeeklyRule, AddsWeeksAloneWithoutAnotherDayToFind) {
    const std::tuple<std::int64_t, Weekdays, const char*> rows[] = {
        {2, {4}, "2024-03-20 10:00:00.250"},
        {0, {4}, "2024-03-06 10:00:00.250"},
        {0, {},  "2024-03-06 10:00:00.250"},
        {1, {9}, "2024-03-06 10:00:00.250"},
    };
    const TestEnvironment environment;
    for (const auto& [weeks, weekdays, expected] : rows) {
        SCOPED_TRACE(testing::PrintToString(weekdays));
        EXPECT_EQ(civilText(dateByAddingWeeks(at("2024-03-06 10:00:00.250"), weeks, weekdays)), expected);
    }
}

TEST(WeeklyRule, KeepsTheFractionOnlyOnTheWayAhead) {
    const TestEnvironment environment;
    EXPECT_EQ(dateByAddingWeeks(at("2024-03-06 10:00:00.250"), 1, Weekdays{6}),
              at("2024-03-08 10:00:00.250"));
    EXPECT_EQ(dateByAddingWeeks(at("2024-03-06 10:00:00.250"), 1, Weekdays{2}), at("2024-03-11 10:00"));
    EXPECT_EQ(dateByAddingWeeks(at("2024-03-09 10:00:00.250"), 1, Weekdays{7, 7}), at("2024-03-16 10:00"));
}

TEST(WeeklyRule, PassesGapsOfTheZone) {
    struct Row {
        const char* what;
        const char *zone, *locale, *from;
        std::int64_t weeks;
        Weekdays weekdays;
        const char* expected;
    };
    const Row rows[] = {
        {"skipped time",     "Europe/Berlin",     "de_DE", "2024-03-30 02:30", 1, {1},    "2024-03-31 03:30"},
        {"walked over",      "Europe/Berlin",     "ar_EG", "2024-03-30 02:30", 1, {2},    "2024-04-01 03:30"},
        {"skipped midnight", "America/Sao_Paulo", "pt_BR", "2018-11-03",       1, {1},    "2018-11-04 01:00"},
        {"day left out",     "Pacific/Apia",      "en_US", "2011-12-29 09:00", 1, {6},    "2012-01-06 09:00"},
        {"another day",      "Pacific/Apia",      "en_US", "2011-12-28 09:00", 2, {1, 6}, "2012-01-13 09:00"},
        {"no other day",     "Pacific/Apia",      "en_US", "2011-12-29 09:00", 0, {6},    "2011-12-29 09:00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const TestEnvironment environment({.timeZone = row.zone, .locale = row.locale});
        EXPECT_EQ(civilText(dateByAddingWeeks(at(row.from), row.weeks, row.weekdays)), row.expected);
    }
}

TEST(WeeklyRule, FitsTheListedWeekdaysOfTheLocalDay) {
    const TestEnvironment environment({.timeZone = "Asia/Tokyo"});
    const Date wednesday = at("2024-03-06 01:00");  // still Tuesday in UTC
    EXPECT_TRUE(isAlignedWithWeeklyRepeatWeekdays(wednesday, Weekdays{}));
    EXPECT_TRUE(isAlignedWithWeeklyRepeatWeekdays(wednesday, Weekdays{7, 4}));
    EXPECT_FALSE(isAlignedWithWeeklyRepeatWeekdays(wednesday, Weekdays{3, 5}));
    EXPECT_FALSE(isAlignedWithWeeklyRepeatWeekdays(wednesday, Weekdays{11, kHuge}));
}

// March 2024 begins on a Friday and ends on a Sunday, June 2024 begins on a Saturday.
TEST(MonthlyRule, TakesTheNextMatchingDay) {
    struct Row {
        const char* what;
        const char* from;
        std::int64_t months;
        std::uint64_t weekday, ordinal;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"second Thursday, ahead",                    "2024-03-05 09:00",        1,  5,             2,     "2024-03-14 09:00"       },
        {"second Thursday, the day itself",           "2024-03-14 09:00",        1,  5,             2,     "2024-04-11 09:00"       },
        {"second Thursday, past",                     "2024-03-20 09:00",        1,  5,             2,     "2024-04-11 09:00"       },
        {"second Thursday, months back",              "2024-03-20 09:00",        -1, 5,             2,     "2024-02-08 09:00"       },
        {"fourth of five Mondays",                    "2024-04-02 09:00",        1,  2,             4,     "2024-04-22 09:00"       },
        {"ordinal beyond the last",                   "2024-04-02 09:00",        1,  2,             kHuge, "2024-04-29 09:00"       },
        {"last day, leap year",                       "2024-01-31 09:00",        1,  1000,          5,     "2024-02-29 09:00"       },
        {"first weekend day",                         "2024-05-31 09:00",        1,  1002,          1,     "2024-06-01 09:00"       },
        {"second weekend day is the second Saturday", "2024-06-01 09:00",        1,  1002,          2,     "2024-06-08 09:00"       },
        {"last weekend day is the last Sunday",       "2024-08-05 09:00",        1,  1002,          kHuge, "2024-08-25 09:00"       },
        {"first working day",                         "2024-05-31 09:00",        1,  1001,          1,     "2024-06-03 09:00"       },
        {"fraction dropped by a rule",                "2024-03-05 09:00:00.500", 1,  5,             2,     "2024-03-14 09:00"       },
        {"fraction kept without a rule",              "2024-03-05 09:00:00.500", 1,  0,             2,     "2024-04-05 09:00:00.500"},
        {"no ordinal",                                "2024-01-31 09:00",        1,  5,             0,     "2024-02-29 09:00"       },
        {"no such day kind",                          "2024-01-31 09:00",        1,  0x1'0000'0005, 2,     "2024-02-29 09:00"       },
        {"onto a skipped time",                       "2024-03-30 02:30",        1,  1,             5,     "2024-03-31 03:30"       },
    };
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.what) + " from " + row.from);
        EXPECT_EQ(civilText(dateByAddingMonths(at(row.from), row.months, row.weekday, row.ordinal)),
                  row.expected);
    }
}

TEST(MonthlyRule, MatchesADayOfTheMonthWhereverTheDateStands) {
    const TestEnvironment environment;
    EXPECT_EQ(matchingDateByAddingMonths(at("2024-06-20 15:30"), 0, 1001, 1), at("2024-06-03 15:30"));
    EXPECT_EQ(matchingDateByAddingMonths(at("2024-06-01 15:30"), 0, 1001, 3), at("2024-06-05 15:30"));
    EXPECT_EQ(matchingDateByAddingMonths(at("2024-05-31 15:30"), 1, 1000, 1), at("2024-06-01 15:30"));
}

TEST(MonthlyRule, FitsItsDayToTheSubsecond) {
    constexpr std::tuple<const char*, std::uint64_t, std::uint64_t, bool> kRows[] = {
        {"2024-03-14 09:00",        5,    2, true },
        {"2024-03-14 09:00:00.500", 5,    2, false},
        {"2024-03-14 09:00:01",     5,    2, true },
        {"2024-03-29 09:00",        6,    5, true },
        {"2024-02-29 09:00",        1000, 5, true },
        {"2024-06-09 09:00",        1002, 2, false},
        {"2024-03-01",              1001, 1, true },
        {"2024-03-14 09:00:00.500", 0,    2, true },
    };
    const TestEnvironment environment({.timeZone = "America/New_York"});
    for (const auto& [date, weekday, ordinal, expected] : kRows) {
        SCOPED_TRACE(std::string(date) + " " + std::to_string(weekday));
        EXPECT_EQ(isAlignedWithMonthlyRepeatWeekday(at(date), weekday, ordinal), expected);
    }
}

TEST(RepeatArithmetic, EndsForCountsAndDatesOfAnySize) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    const Date date = at("2024-03-08 09:00");
    const TimeInterval infinite(std::numeric_limits<double>::infinity());
    for (const Date from : {date, Date(infinite), Date(-infinite), Date(infinite * 0)}) {
        for (const std::int64_t count : {kLeast, kMost}) {
            const Date byWeeks = dateByAddingWeeks(from, count, Weekdays{2, 4});
            const Date byMonths = dateByAddingMonths(from, count, 2, 1);
            const Date byYears = dateByAddingYears(from, count);
            for (const Date result : {byWeeks, byMonths, byYears}) {
                EXPECT_LT(std::abs(result.time_since_epoch().count()), 1e15) << count;
            }
        }
    }
    EXPECT_LT(dateByAddingWeeks(date, kLeast, Weekdays{2}), date);
    EXPECT_GT(dateByAddingWeeks(date, kMost, Weekdays{2}), date);
    EXPECT_LT(dateByAddingMonths(date, kLeast, 2, 1), date);
    EXPECT_GT(dateByAddingMonths(date, kMost, 2, 1), date);
}

}  // namespace
}  // namespace corvane
