#include "dates/Rfc3339.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

Rfc3339Formatter formatterFor(const char* zoneName) {
    cctz::time_zone zone;
    EXPECT_TRUE(cctz::load_time_zone(zoneName, &zone));
    return Rfc3339Formatter(zone);
}

Date reference(double seconds) { return Date(TimeInterval(seconds)); }

TEST(Rfc3339, ReadsAndWritesOneMoment) {
    struct Row {
        const char16_t* text;
        double date;  // seconds since 2001-01-01 00:00 UTC
    };
    constexpr Row kRows[] = {
        {u"2001-01-01T00:00:00.000Z", 0               },
        {u"2024-03-05T14:07:09.250Z", 731340429.25    },
        {u"2000-12-31T23:59:59.999Z", -0.001          },
        {u"0000-01-01T00:00:00.000Z", -63145526400    },
        {u"9999-12-31T23:59:59.999Z", 252423993599.999},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(utf8FromText(row.text));
        const std::optional<Date> date = dateFromRfc3339(row.text);
        ASSERT_TRUE(date);
        EXPECT_DOUBLE_EQ(date->time_since_epoch().count(), row.date);
        EXPECT_EQ(stringOfRfc3339(reference(row.date)), row.text);
    }
}

TEST(Rfc3339, ReadsNothingElse) {
    constexpr const char16_t* kTexts[] = {
        u"",
        u"2024-03-05",
        u"2024-03-05T14:07:09Z",
        u"2024-03-05T14:07:09.2500Z",
        u"2024-03-05T14:07:09.250z",
        u"2024-03-05 14:07:09.250Z",
        u"2024-03-05T14:07:09.250+00:00",
        u"2024-03-05T14:07:09.250Z\n",
        u"12024-03-05T14:07:09.250Z",
        u"-024-03-05T14:07:09.250Z",
        u"2024-3-05T14:07:09.2500Z",
        u"2024-13-05T14:07:09.250Z",
        u"2024-04-31T14:07:09.250Z",
        u"1900-02-29T14:07:09.250Z",
        u"2024-03-05T24:00:00.000Z",
        u"2024-03-05T14:60:09.250Z",
        u"2016-12-31T23:59:60.000Z",
        u"2024-03-05T-1:07:09.250Z",
        u"2024-03-05T14:07:0x.250Z",
        u"\u0662\u0660\u0662\u0664-03-05T14:07:09.250Z",
    };
    for (const char16_t* text : kTexts) {
        EXPECT_FALSE(dateFromRfc3339(text)) << utf8FromText(text);
        EXPECT_FALSE(dateLocalizedFromRfc3339(text)) << utf8FromText(text);
    }
    EXPECT_FALSE(
        dateFromRfc3339(std::u16string_view(u"2024-03-05T14:07:09.\0"
                                            u"50Z",
                                            24)));
}

TEST(Rfc3339, WritesTheNearestMillisecondThatTheFormReaches) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::pair<double, const char16_t*> rows[] = {
        {0.0006,            u"2001-01-01T00:00:00.001Z"},
        {-0.0004,           u"2001-01-01T00:00:00.000Z"},
        {-0.0006,           u"2000-12-31T23:59:59.999Z"},
        {730943999.9996,    u"2024-03-01T00:00:00.000Z"},
        {252423993599.9997, u"9999-12-31T23:59:59.999Z"},
        {kInfinity,         u"9999-12-31T23:59:59.999Z"},
        {-63145526400.001,  u"0000-01-01T00:00:00.000Z"},
        {-1e300,            u"0000-01-01T00:00:00.000Z"},
        {std::nan(""),      u"2001-01-01T00:00:00.000Z"},
    };
    for (const auto& [date, expected] : rows) EXPECT_EQ(stringOfRfc3339(reference(date)), expected) << date;
}

TEST(Rfc3339Formatter, ReadsSkippedAndRepeatedWallClockTimes) {
    const Rfc3339Formatter berlin = formatterFor("Europe/Berlin");
    EXPECT_EQ(stringOfRfc3339(berlin.dateFromString(u"2024-03-31T02:30:00.000Z").value()),
              u"2024-03-31T01:30:00.000Z");
    EXPECT_EQ(stringOfRfc3339(berlin.dateFromString(u"2024-10-27T02:30:00.000Z").value()),
              u"2024-10-27T00:30:00.000Z");
    EXPECT_EQ(berlin.stringFromDate(dateFromRfc3339(u"2024-10-27T01:30:00.000Z").value()),
              u"2024-10-27T02:30:00.000Z");
}

TEST(Rfc3339Formatter, AgreesWithTheZoneLibrary) {
    const Rfc3339Formatter formatter = formatterFor("America/New_York");
    cctz::time_zone zone;
    ASSERT_TRUE(cctz::load_time_zone("America/New_York", &zone));
    std::mt19937_64 random(20241124);
    std::uniform_int_distribution<std::int64_t> moments(-62135596800000, 253402200000000);  // years 1 to 9999
    for (int i = 0; i < 2000; ++i) {
        const std::chrono::milliseconds moment(moments(random));
        const cctz::time_point<std::chrono::milliseconds> point(moment);
        const Date date = dateFromSecondsSince1970(static_cast<double>(moment.count()) / 1000);
        EXPECT_EQ(utf8FromText(formatter.stringFromDate(date)),
                  cctz::format("%E4Y-%m-%dT%H:%M:%E3SZ", point, zone));
        if (zone.lookup(cctz::convert(point, zone)).kind == cctz::time_zone::civil_lookup::UNIQUE) {
            EXPECT_NEAR((formatter.dateFromString(formatter.stringFromDate(date)).value() - date).count(), 0,
                        0.0001);
        }
        const std::optional<Date> read = dateFromRfc3339(stringOfRfc3339(date));
        ASSERT_TRUE(read);
        EXPECT_NEAR((*read - date).count(), 0, 0.0001);
    }
}

// A process sets its formatters up once, so the test has a process of its own.
[[noreturn]] void exitWith(bool isRight) { std::exit(isRight ? 0 : 1); }

TEST(Rfc3339Load, KeepsTheZoneOfTheStart) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto startAndMove = [] {
        const TestEnvironment environment({.timeZone = "Asia/Kathmandu"});
        load();
        environment->timeZone = "America/New_York";
        load();
        const Date date = dateFromRfc3339(u"2024-03-05T14:07:09.250Z").value();
        exitWith(stringOfLocalizedRfc3339(date) == u"2024-03-05T19:52:09.250Z" &&
                 dateLocalizedFromRfc3339(u"2024-03-05T19:52:09.250Z") == date);
    };
    EXPECT_EXIT(startAndMove(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace corvane
