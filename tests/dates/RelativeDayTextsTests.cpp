#include "dates/RelativeDayTexts.h"

#include <gtest/gtest.h>

#include <limits>

#include "dates/Rfc3339.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

TEST(DaysLeft, CountsCivilDays) {
    constexpr std::tuple<const char*, const char*, const char*, std::int32_t> kRows[] = {
        {"Europe/Berlin",     "2024-03-05 00:01",        "2024-03-05 23:59", 0   },
        {"Europe/Berlin",     "2024-03-06 00:01",        "2024-03-05 23:59", 1   },
        {"Europe/Berlin",     "2024-03-05 23:59:59.999", "2024-03-06",       -1  },
        {"Europe/Berlin",     "2024-04-01 00:00",        "2024-03-30 23:00", 2   },
        {"Europe/Berlin",     "2025-02-05",              "2024-02-05",       366 },
        {"America/Sao_Paulo", "2018-11-04 01:30",        "2018-11-03 23:30", 1   },
        {"Atlantic/Azores",   "2024-10-28 00:00",        "2024-10-27 23:30", 1   },
        {"Pacific/Apia",      "2011-12-31 09:00",        "2011-12-29 09:00", 2   },
        {"UTC",               "1999-12-31",              "2001-01-01",       -367},
    };
    for (const auto& [zone, date, since, expected] : kRows) {
        SCOPED_TRACE(std::string(zone) + ": " + date + " since " + since);
        const TestEnvironment environment({.timeZone = zone});
        EXPECT_EQ(daysLeftSinceDate(at(date), at(since)), expected);
    }
}

TEST(DaysLeft, StaysWithin32Bits) {
    const TestEnvironment environment;
    const TimeInterval farAway(std::numeric_limits<double>::infinity());
    EXPECT_EQ(daysLeftSinceDate(Date(farAway), Date(-farAway)), 2147483647);
    EXPECT_EQ(daysLeftSinceDate(Date(-farAway), Date(farAway)), -2147483647);
    EXPECT_EQ(stringOfDaysLeftSinceDate(Date(-farAway), Date(farAway), false), u"2147483647 days ago");
    EXPECT_EQ(stringOfDaysDiffSinceDate(Date(-farAway), Date(farAway)), u"2147483647 days before");
}

TEST(RelativeDayTexts, NameTheDay) {
    constexpr std::tuple<const char*, const char16_t*, const char16_t*, const char16_t*> kRows[] = {
        {"2023-03-05 14:07", u"366 days ago", u"366 days ago",      u"366 days before"},
        {"2024-03-03 14:07", u"2 days ago",   u"2 days ago",        u"2 days before"  },
        {"2024-03-04 14:07", u"Yesterday",    u"Yesterday",         u"1 day before"   },
        {"2024-03-05 00:00", u"Today",        u"Today at 00:00",    u""               },
        {"2024-03-05 23:59", u"Today",        u"Today at 23:59",    u""               },
        {"2024-03-06 00:01", u"Tomorrow",     u"Tomorrow at 00:01", u"1 day after"    },
        {"2024-03-07 14:07", u"In 2 days",    u"In 2 days",         u"2 days after"   },
        {"2024-04-05 14:07", u"In 31 days",   u"In 31 days",        u"31 days after"  },
    };
    constexpr bool kIncludeTime = true;
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = "en_GB"});
    const Date since = at("2024-03-05 12:00");
    for (const auto& [date, left, leftWithTime, difference] : kRows) {
        SCOPED_TRACE(date);
        EXPECT_EQ(stringOfDaysLeftSinceDate(at(date), since, !kIncludeTime), left);
        EXPECT_EQ(stringOfDaysLeftSinceDate(at(date), since, kIncludeTime), leftWithTime);
        EXPECT_EQ(stringOfDaysDiffSinceDate(at(date), since), difference);
    }
}

// Polish has a form for 2 to 4 and one for 5 and more.
std::optional<std::string> polish(const char* key, std::optional<std::int64_t> count) {
    const std::string_view english = key;
    const bool isFew = count && *count >= 2 && *count <= 4;
    if (english == "%d days ago") return count ? std::optional<std::string>("%d dni temu") : std::nullopt;
    if (english == "In %d days") return isFew ? "Za %d dni (2-4)" : "Za %d dni (5+)";
    if (english == "2 days ago") return "Przedwczoraj";
    if (english == "In 2 days") return "Pojutrze";
    if (english == "Today at %@") return "%@ dzisiaj";
    if (english == "%d days after") return isFew ? "%d dni po" : "%%d bez liczby";
    return std::nullopt;
}

TEST(RelativeDayTexts, SpeakTheUsersLanguage) {
    const TestEnvironment environment({.timeZone = "Europe/Warsaw", .locale = "pl_PL"});
    environment->translate = polish;
    constexpr bool kIncludeTime = true;
    const Date since = at("2024-03-05 12:00");
    const auto left = [&](const char* date) {
        return utf8FromText(stringOfDaysLeftSinceDate(at(date), since, kIncludeTime));
    };
    EXPECT_EQ(left("2024-03-02"), "3 dni temu");
    EXPECT_EQ(left("2024-03-03"), "Przedwczoraj");
    EXPECT_EQ(left("2024-03-05 14:07"), "14:07 dzisiaj");
    EXPECT_EQ(left("2024-03-07"), "Pojutrze");
    EXPECT_EQ(left("2024-03-08"), "Za 3 dni (2-4)");
    EXPECT_EQ(left("2024-03-10"), "Za 5 dni (5+)");
    EXPECT_EQ(left("2024-03-04"), "Yesterday");
    EXPECT_EQ(stringOfDaysDiffSinceDate(at("2024-03-08"), since), u"3 dni po");
    EXPECT_EQ(stringOfDaysDiffSinceDate(at("2024-03-10"), since), u"%d bez liczby");
}

}  // namespace
}  // namespace corvane
