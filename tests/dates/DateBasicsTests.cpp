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
    constexpr std::tuple<const char*, const char*, const char16_t*, const char16_t*> kRows[] = {
        {"a day's end",      "Europe/Berlin",     u"2024-03-05T22:59:59.999Z", u"2024-03-04T23:00:00.000Z"},
        {"midnight",         "Europe/Berlin",     u"2024-03-05T23:00:00.000Z", u"2024-03-05T23:00:00.000Z"},
        {"before 2001",      "Asia/Tokyo",        u"1969-12-31T16:30:00.500Z", u"1969-12-31T15:00:00.000Z"},
        {"skipped",          "America/Sao_Paulo", u"2018-11-04T15:00:00.000Z", u"2018-11-04T03:00:00.000Z"},
        {"after the second", "Atlantic/Azores",   u"2024-10-27T01:30:00.000Z", u"2024-10-27T00:00:00.000Z"},
        {"last hour twice",  "America/Sao_Paulo", u"2018-02-18T02:30:00.000Z", u"2018-02-17T02:00:00.000Z"},
    };
    for (const auto& [what, zone, date, expected] : kRows) {
        SCOPED_TRACE(std::string(what) + ", " + zone);
        const TestEnvironment environment({.timeZone = zone});
        EXPECT_EQ(stringOfRfc3339(dateByResettingTimeToMidnight(utc(date))), expected);
    }
}

TEST(TodayMidnight, StartsTheDaySoManyDaysOn) {
    constexpr std::tuple<const char*, const char*, std::int32_t, const char16_t*> kRows[] = {
        {"Europe/Berlin",     "2024-03-30 12:00", 2,  u"2024-03-31T22:00:00.000Z"},
        {"Europe/Berlin",     "2024-03-01 12:00", -1, u"2024-02-28T23:00:00.000Z"},
        {"America/Sao_Paulo", "2018-11-03 12:00", 1,  u"2018-11-04T03:00:00.000Z"},
        {"America/Sao_Paulo", "2018-11-04 12:00", 1,  u"2018-11-05T02:00:00.000Z"},
        {"Atlantic/Azores",   "2024-10-28 12:00", -1, u"2024-10-27T00:00:00.000Z"},
        {"Pacific/Apia",      "2011-12-29 12:00", 1,  u"2011-12-30T10:00:00.000Z"},
        {"Pacific/Apia",      "2011-12-29 12:00", 2,  u"2011-12-30T10:00:00.000Z"},
    };
    for (const auto& [zone, now, offset, expected] : kRows) {
        SCOPED_TRACE(std::string(zone) + " " + now + " offset " + std::to_string(offset));
        const TestEnvironment environment({.timeZone = zone, .now = now});
        EXPECT_EQ(stringOfRfc3339(dateOfTodayMidnightWithDaysOffset(offset)), expected);
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
        EXPECT_EQ(dateByAddingDays(at(row.from), row.days, row.hour, row.minute), at(row.expected))
            << row.expected;
    }
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    constexpr std::int32_t kMostHours = std::numeric_limits<std::int32_t>::max();
    EXPECT_GT(dateByAddingDays(Date(), kMost, kMostHours, kMostHours), Date());
    EXPECT_LT(dateByAddingDays(Date(), -kMost, -kMostHours, -kMostHours), Date());
    const Date infinite{TimeInterval(std::numeric_limits<double>::infinity())};
    EXPECT_TRUE(std::isfinite(dateByResettingTimeToMidnight(infinite).time_since_epoch().count()));
}

}  // namespace
}  // namespace corvane
