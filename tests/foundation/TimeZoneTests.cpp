#include "platform/foundation/TimeZone.h"

#include <gtest/gtest.h>

#include "platform/foundation/Calendar.h"
#include "support/FileBytes.h"
#include "support/ProcessVariable.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

// The hours of a summer day that a zone is east of Greenwich.
int summerHours(const cctz::time_zone& zone) {
    return zone.lookup(cctz::convert(cctz::civil_second(2024, 7, 1), cctz::utc_time_zone())).offset / 3600;
}

TEST(TimeZone, ReadsTheFormsOfTheSetting) {
    constexpr std::pair<const char*, int> kRows[] = {
        {"Europe/Berlin",                  2 },
        {":Europe/Berlin",                 2 },
        {"/usr/share/zoneinfo/Asia/Tokyo", 9 },
        {"",                               0 },
        {":",                              0 },
        {"JST-9",                          9 },
        {"<-03>3",                         -3},
        {"CET-1CEST,M3.5.0,M10.5.0/3",     2 },
        {"CET-1CEST,M3.5.0,M10",           0 },
        {"Nowhere/Land",                   0 },
        {"../../passwd",                   0 },
    };
    for (const auto& [setting, hours] : kRows) {
        SCOPED_TRACE(setting);
        EXPECT_EQ(summerHours(timeZoneOfSetting(setting)), hours);
    }
}

TEST(TimeZone, FollowsAChangedSettingAtOnce) {
    const TestEnvironment environment({.timeZone = ""});
    const ProcessVariable berlin("TZ", "Europe/Berlin");
    EXPECT_EQ(summerHours(Calendar::current().timeZone()), 2);
    const ProcessVariable tokyo("TZ", "Asia/Tokyo");
    EXPECT_EQ(summerHours(Calendar::current().timeZone()), 9);
    environment->timeZone = "America/New_York";
    EXPECT_EQ(summerHours(Calendar::current().timeZone()), -4);
    environment->timeZone = "";
    EXPECT_EQ(summerHours(Calendar::current().timeZone()), 9);
}

TEST(TimeZone, KeepsToRulesInPlaceOfAName) {
    constexpr std::pair<const char*, double> kHoursOfTheLastDayOfMarch[] = {
        {"CET-1CEST,M3.5.0,M10.5.0/3",   23},
        {"<+0330>-3:30",                 24},
        {"<-04>4<-03>,M10.1.0/0,M3.5.0", 25},
    };
    for (const auto& [rules, hours] : kHoursOfTheLastDayOfMarch) {
        SCOPED_TRACE(rules);
        const TestEnvironment environment({.timeZone = rules});
        EXPECT_EQ(at("2024-04-01") - at("2024-03-31"), TimeInterval(hours * 3600));
        EXPECT_EQ(civilText(at("2150-07-01 09:00")), "2150-07-01 09:00");
    }
}

TEST(TimeZone, ReadsTheDevicesFileWhereNothingIsSet) {
    const TestEnvironment environment({.timeZone = ""});
    const int expected = summerHours(timeZoneOfFile("/etc/localtime"));
    for (const char* setting : {static_cast<const char*>(nullptr), ":/etc/localtime", "/etc/localtime"}) {
        const ProcessVariable variable("TZ", setting);
        EXPECT_EQ(summerHours(currentTimeZone()), expected);
    }
}

TEST(TimeZone, ReadsAFileAgainThatWasReplaced) {
    const TemporaryDirectory directory;
    const std::filesystem::path file = directory.path() / "localtime";
    std::filesystem::create_symlink("/usr/share/zoneinfo/Europe/Berlin", file);
    EXPECT_EQ(timeZoneOfFile(file).name(), "Europe/Berlin");
    std::filesystem::remove(file);
    EXPECT_EQ(summerHours(timeZoneOfFile(file)), 0);
    std::filesystem::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", file);
    EXPECT_EQ(timeZoneOfFile(file).name(), "Asia/Tokyo");
    std::filesystem::remove(file);
    writeFileBytes(file, fileBytes("/usr/share/zoneinfo/Europe/Berlin"));
    EXPECT_EQ(summerHours(timeZoneOfFile(file)), 2) << "a copy, not a link";
    writeFileBytes(file, "no zone");
    EXPECT_EQ(summerHours(timeZoneOfFile(file)), 0);
}

}  // namespace
}  // namespace corvane
