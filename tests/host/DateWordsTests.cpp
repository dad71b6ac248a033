#include "apps/host/DateWords.h"

#include <gtest/gtest.h>

#include "apps/host/AlertWords.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

// "2024-03-05", "2024-03-05 14:00", or "-" for no date. The day alone stands without a time.
std::string read(std::string_view text) {
    const auto reading = dateFromWords(textFromUtf8(text));
    const auto* date = std::get_if<DateFromWords>(&reading);
    if (!date) return "-";
    const std::string civil = civilText(date->date);
    return date->hasTime && civil.size() == 10 ? civil + " 00:00" : civil;
}

struct Row {
    const char* text;
    const char* expected;
};

template <std::size_t N>
void expectRows(const Row (&rows)[N]) {
    for (const Row& row : rows) EXPECT_EQ(read(row.text), row.expected) << row.text;
}

// Tuesday, 5 March 2024.
TEST(DateWords, ReadsEnglishWords) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = "en_US"});
    constexpr Row kRows[] = {
        {"2024-02-29",                "2024-02-29"      },
        {" 2024-03-09T14:05 ",        "2024-03-09 14:05"},
        {"2024-03-09T13:05:00.000Z",  "2024-03-09 14:05"},
        {"2024-03-09T13:05:00Z",      "2024-03-09 14:05"},
        {"2024-03-09T13:05:00-05:00", "2024-03-09 19:05"},
        {"2024-03-09T13:05:00",       "2024-03-09 13:05"},
        {"TODAY",                     "2024-03-05"      },
        {"tomorrow at 2pm",           "2024-03-06 14:00"},
        {"tomorrow 12am",             "2024-03-06 00:00"},
        {"tuesday",                   "2024-03-12"      },
        {"on friday, 14:00",          "2024-03-08 14:00"},
        {"next sunday",               "2024-03-10"      },
        {"next week",                 "2024-03-12"      },
        {"+3d",                       "2024-03-08"      },
        {"+1m",                       "2024-04-05"      },
        {"+1y 9:00",                  "2025-03-05 09:00"},
        {"in 3 days",                 "2024-03-08"      },
        {"3/9/24",                    "2024-03-09"      },
        {"Mar 9",                     "2024-03-09"      },
        {"Mar 4",                     "2025-03-04"      },
        {"14:00",                     "2024-03-05 14:00"},
    };
    expectRows(kRows);
}

TEST(DateWords, ReadsTheUsersLocale) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = "de_DE"});
    constexpr Row kRows[] = {
        {"9.3.2024 14:05", "2024-03-09 14:05"},
        {"Mittwoch",       "2024-03-06"      },
        {"next sunday",    "2024-03-17"      }, // weeks start on Monday
        {"friday",         "2024-03-08"      },
    };
    expectRows(kRows);
}

TEST(DateWords, RefusesWhatIsNoDate) {
    const TestEnvironment environment;
    for (const char* text : {"", "  ", "soon", "2024-02-30", "2024-13-01", "0000-01-01", "2024-03-05T25:00",
                             "tomorrow 13pm", "tomorrow 0am", "10:7", "10:60", "+3", "+99999d", "in days",
                             "12", "next", "tomorrow tomorrow", "monday 14:00 15:00", "+-3d"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(read(text), "-");
    }
}

TEST(DateWords, MeansTheFirstInstantOfADayAndMovesSkippedTimesOn) {
    const TestEnvironment brazil({.timeZone = "America/Sao_Paulo", .now = "2018-11-03 12:00"});
    EXPECT_EQ(read("tomorrow"), "2018-11-04 01:00");  // midnight is skipped
    const TestEnvironment berlin({.timeZone = "Europe/Berlin", .now = "2024-03-30 12:00"});
    EXPECT_EQ(read("tomorrow 2:30"), "2024-03-31 03:30");
    EXPECT_EQ(read("+1d 12:00"), "2024-03-31 12:00");
}

std::string alert(std::string_view text, std::optional<Date> due) {
    const auto reading = alertFromWords(textFromUtf8(text), due);
    const auto* date = std::get_if<std::optional<Date>>(&reading);
    if (!date) return "-";
    return *date ? civilText(**date) : "none";
}

TEST(AlertWords, ReadsDistancesTimesAndDates) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    const Date due = at("2024-03-31 12:00");  // summer time began that night
    constexpr Row kRows[] = {
        {"15m",            "2024-03-31 11:45"},
        {"2 hours before", "2024-03-31 10:00"},
        {"1d",             "2024-03-30 12:00"},
        {"at due time",    "2024-03-31 12:00"},
        {"tomorrow 9am",   "2024-03-06 09:00"},
        {"none",           "none"            },
        {"tomorrow",       "-"               },
        {"15",             "-"               },
    };
    for (const Row& row : kRows) EXPECT_EQ(alert(row.text, due), row.expected) << row.text;
    EXPECT_EQ(alert("15m", std::nullopt), "-");
    EXPECT_EQ(alert("none", std::nullopt), "none");
}

TEST(AlertWords, WritesDistances) {
    const TestEnvironment environment;
    const Date due = at("2024-03-08 12:00");
    EXPECT_EQ(alertInWords(due, due), u"at due time");
    EXPECT_EQ(alertInWords(at("2024-03-08 11:59"), due), u"1 minute before");
    EXPECT_EQ(alertInWords(at("2024-03-08 10:30"), due), u"90 minutes before");
    EXPECT_EQ(alertInWords(at("2024-03-06 12:00"), due), u"2 days before");
    EXPECT_EQ(utf8FromText(alertInWords(at("2024-03-09 09:00"), due)), "Sat, Mar 9, 9:00\u202FAM");
}

}  // namespace
}  // namespace corvane
