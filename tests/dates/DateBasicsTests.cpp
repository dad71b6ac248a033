#include "dates/DateBasics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "dates/Rfc3339.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

Date utc(std::u16string_view text) { return dateFromRfc3339(text).value(); }

// The calendar's own tests know more zones.
TEST(Midnight, IsTheFirstInstantOfTheLocalDay) {
    struct Row {
        const char* what;
        const char* zone;
        const char16_t* date;
        const char16_t* expected;
    };
    constexpr Row kRows[] = {
        {"a day's end",      "Europe/Berlin",     u"2024-03-05T22:59:59.999Z", u"2024-03-04T23:00:00.000Z"},
        {"midnight",         "Europe/Berlin",     u"2024-03-05T23:00:00.000Z", u"2024-03-05T23:00:00.000Z"},
        {"before 2001",      "Asia/Tokyo",        u"1969-12-31T16:30:00.500Z", u"1969-12-31T15:00:00.000Z"},
        {"skipped",          "America/Sao_Paulo", u"2018-11-04T15:00:00.000Z", u"2018-11-04T03:00:00.000Z"},
        {"after the second", "Atlantic/Azores",   u"2024-10-27T01:30:00.000Z", u"2024-10-27T00:00:00.000Z"},
        {"last hour twice",  "America/Sao_Paulo", u"2018-02-18T02:30:00.000Z", u"2018-02-17T02:00:00.000Z"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.what) + ", " + row.zone);
        const TestEnvironment environment({.timeZone = row.zone});
        EXPECT_EQ(stringOfRfc3339(dateByResettingTimeToMidnight(utc(row.date))), row.expected);
    }
}

TEST(TodayMidnight, StartsTheDaySoManyDaysOn) {
    struct Row {
        const char* zone;
        const char* now;
        std::int32_t offset;
        const char16_t* expected;
    };
    constexpr Row kRows[] = {
        {"Europe/Berlin",     "2024-03-30 12:00", 2,  u"2024-03-31T22:00:00.000Z"},
        {"Europe/Berlin",     "2024-03-01 12:00", -1, u"2024-02-28T23:00:00.000Z"},
        {"America/Sao_Paulo", "2018-11-03 12:00", 1,  u"2018-11-04T03:00:00.000Z"},
        {"America/Sao_Paulo", "2018-11-04 12:00", 1,  u"2018-11-05T02:00:00.000Z"},
        {"Atlantic/Azores",   "2024-10-28 12:00", -1, u"2024-10-27T00:00:00.000Z"},
        {"Pacific/Apia",      "2011-12-29 12:00", 1,  u"2011-12-30T10:00:00.000Z"},
        {"Pacific/Apia",      "2011-12-29 12:00", 2,  u"2011-12-30T10:00:00.000Z"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.zone) + " " + row.now + " offset " + std::to_string(row.offset));
        const TestEnvironment environment({.timeZone = row.zone, .now = row.now});
        EXPECT_EQ(stringOfRfc3339(dateOfTodayMidnightWithDaysOffset(row.offset)), row.expected);
    }
}

TEST(TodayMidnight, FollowsTheClockAndTheZone) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .now = "2024-03-05 23:59:59.999"});
    EXPECT_EQ(dateOfTodayMidnightWithDaysOffset(0), at("2024-03-05"));
    environment.setNow("2024-03-06 00:00");
    EXPECT_EQ(dateOfTodayMidnightWithDaysOffset(0), at("2024-03-06"));
    environment->timeZone = "America/New_York";
    EXPECT_EQ(dateOfTodayMidnightWithDaysOffset(0), at("2024-03-05"));
}

TEST(AddingDays, KeepsTheWallClockTime) {
    struct Row {
        const char* what;
        const char* zone;
        const char16_t* date;
        std::int64_t days;
        const char16_t* expected;
    };
    constexpr Row kRows[] = {
        {"into summer time", "Europe/Berlin", u"2024-03-30T08:00:00.250Z", 1,    u"2024-03-31T07:00:00.250Z"},
        {"and back",         "Europe/Berlin", u"2024-03-31T07:00:00.000Z", -1,   u"2024-03-30T08:00:00.000Z"},
        {"second 02:30",     "Europe/Berlin", u"2024-10-27T01:30:00.000Z", 1,    u"2024-10-28T01:30:00.000Z"},
        {"no days",          "Europe/Berlin", u"2024-10-27T01:30:00.000Z", 0,    u"2024-10-27T01:30:00.000Z"},
        {"a year back",      "UTC",           u"2024-01-01T00:00:00.000Z", -366, u"2022-12-31T00:00:00.000Z"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        const TestEnvironment environment({.timeZone = row.zone});
        EXPECT_EQ(stringOfRfc3339(dateByAddingDays(utc(row.date), row.days)), row.expected);
    }
}

TEST(AddingDays, BuildsATimeOfDay) {
    struct Row {
        const char* from;
        std::int64_t days;
        std::int32_t hour, minute;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"2024-03-05 23:59:59.999", 0, 9,  30, "2024-03-05 09:30"},
        {"2024-02-28 18:00",        2, 7,  5,  "2024-03-01 07:05"},
        {"2024-03-30 18:00",        1, 2,  30, "2024-03-31 03:30"},
        {"2024-03-05 18:00",        0, 24, 0,  "2024-03-06"      },
        {"2024-03-05 18:00",        0, -1, 90, "2024-03-05 00:30"},
    };
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(dateByAddingDays(at(row.from), row.days, row.hour, row.minute), at(row.expected));
    }
}

TEST(AddingDays, EndsForCountsAndDatesOfAnySize) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    constexpr std::int32_t kMostHours = std::numeric_limits<std::int32_t>::max();
    const Date date = at("2024-03-05 09:00");
    EXPECT_LT(dateByAddingDays(date, kLeast), date);
    EXPECT_GT(dateByAddingDays(date, kMost), date);
    EXPECT_GT(dateByAddingDays(date, kMost, kMostHours, kMostHours), date);
    EXPECT_LT(dateByAddingDays(date, kLeast, -kMostHours, -kMostHours), date);

    const Date infinite{TimeInterval(std::numeric_limits<double>::infinity())};
    EXPECT_GT(dateByResettingTimeToMidnight(infinite), date);
    EXPECT_TRUE(std::isfinite(dateByResettingTimeToMidnight(infinite).time_since_epoch().count()));

    const TestEnvironment inUtc;
    const TimeInterval difference =
        dateOfTodayMidnightWithDaysOffset(2147483647) - dateOfTodayMidnightWithDaysOffset(0);
    EXPECT_EQ(difference.count(), 185542587100800.0);
}

}  // namespace
}  // namespace corvane
