#include "dates/DateTexts.h"

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

TEST(DateTexts, FollowTheLocale) {
    struct Row {
        const char* locale;
        const char16_t* time;
        const char16_t* thisYear;
        const char16_t* otherYear;
    };
    constexpr Row kRows[] = {
        {"en_US", u"2:07\u202fPM", u"Tue, Mar 5",    u"Sat, Mar 5, 2022"  },
        {"de_DE", u"14:07",        u"Di., 5. März", u"Sa., 5. März 2022"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.locale);
        const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = row.locale});
        EXPECT_EQ(stringOfTime(at("2024-03-05 14:07:59.999")), row.time);
        EXPECT_EQ(stringOfDate(at("2024-03-05 14:07")), row.thisYear);
        EXPECT_EQ(stringOfDate(at("2022-03-05 14:07")), row.otherYear);
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
