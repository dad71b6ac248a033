#include "dates/DateTexts.h"

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

TEST(DateTexts, FollowTheLocale) {
    constexpr std::tuple<const char*, const char16_t*, const char16_t*, const char16_t*> kRows[] = {
        {"en_US", u"2:07\u202fPM", u"Tue, Mar 5",    u"Sat, Mar 5, 2022"  },
        {"de_DE", u"14:07",        u"Di., 5. März", u"Sa., 5. März 2022"},
    };
    for (const auto& [locale, time, thisYear, otherYear] : kRows) {
        SCOPED_TRACE(locale);
        const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = locale});
        EXPECT_EQ(stringOfTime(at("2024-03-05 14:07:59.999")), time);
        EXPECT_EQ(stringOfDate(at("2024-03-05 14:07")), thisYear);
        EXPECT_EQ(stringOfDate(at("2022-03-05 14:07")), otherYear);
    }
}

TEST(DateTexts, ShowTheYearOnlyOutsideTheCurrentOne) {
    constexpr std::tuple<const char*, const char*, const char16_t*> kRows[] = {
        {"2024-03-05 12:00",        "2024-01-01 00:00",        u"Mon, Jan 1"       },
        {"2024-03-05 12:00",        "2023-12-31 23:59:59.999", u"Sun, Dec 31, 2023"},
        {"2024-12-31 23:59:59.999", "2025-01-01 00:00",        u"Wed, Jan 1, 2025" },
        {"2025-01-01 00:00",        "2025-01-01 00:00",        u"Wed, Jan 1"       },
    };
    const TestEnvironment environment({.timeZone = "America/New_York"});
    for (const auto& [now, date, expected] : kRows) {
        SCOPED_TRACE(std::string(now) + " shows " + date);
        environment.setNow(now);
        EXPECT_EQ(stringOfDate(at(date)), expected);
    }
}

TEST(DateTexts, FollowAChangeOfZoneAndLocale) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = "de_DE"});
    const Date date = at("2024-03-05 01:07");
    EXPECT_EQ(stringOfDateTime(date), u"Di., 5. März, 01:07");
    environment->timeZone = "America/New_York";
    EXPECT_EQ(stringOfDateTime(date), u"Mo., 4. März, 19:07");
    environment->locale = "en_US";
    EXPECT_EQ(stringOfDateTime(date), u"Mon, Mar 4, 7:07\u202fPM");
}

}  // namespace
}  // namespace corvane
