#include "apps/host/RepeatWords.h"

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

// The rule printed again; "-" for none.
std::string again(std::string_view text) {
    const auto reading = repeatFromWords(textFromUtf8(text));
    const auto* rule = std::get_if<RepeatRule>(&reading);
    return rule ? utf8FromText(repeatInWords(*rule)) : "-";
}

struct Row {
    const char* text;
    const char* expected;
};

TEST(RepeatWords, ReadsAndPrintsRules) {
    const TestEnvironment environment;
    constexpr Row kRows[] = {
        {"None",                                "none"                                 },
        {"daily",                               "every day"                            },
        {"every other day",                     "every 2 days"                         },
        {"every 2 weeks on Mon, Fri",           "every 2 weeks on Mon, Fri"            },
        {"weekly on friday and monday, friday", "every week on Fri, Mon"               },
        {"every weekday",                       "every week on Mon, Tue, Wed, Thu, Fri"},
        {"monthly on the second thursday",      "every month on the 2nd Thursday"      },
        {"every month on the last day",         "every month on the last day"          },
        {"annually",                            "every year"                           },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(again(row.text), row.expected);
        EXPECT_EQ(again(row.expected), row.expected);
    }
}

TEST(RepeatWords, RefusesWhatIsNoRule) {
    const TestEnvironment environment;
    for (const char* text :
         {"", "every", "every 0 days", "every 2", "often", "every day on mon", "every week on",
          "every month on day 15", "every month on the 5th monday", "every month on mon", "every year on mon",
          "every 99999 days", "every week on 3"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(again(text), "-");
    }
}

TEST(RepeatWords, TakesWeekdaysOfTheUsersLanguage) {
    const TestEnvironment environment({.locale = "de_DE"});
    EXPECT_EQ(again("every week on Mittwoch, fri"), "every week on Mi, Fr");
    EXPECT_EQ(again("every week on Mi, Fr"), "every week on Mi, Fr");
}

TEST(RepeatWords, ReadsBackEveryRule) {
    const TestEnvironment environment;
    for (const std::uint64_t kind : {1, 2, 7, 1000, 1001, 1002}) {
        for (std::uint64_t ordinal = 1; ordinal <= 5; ++ordinal) {
            const RepeatRule rule{kRepeatMonthly, 2, {}, ordinal, kind};
            EXPECT_EQ(std::get<RepeatRule>(repeatFromWords(repeatInWords(rule))), rule);
        }
    }
    for (unsigned days = 0; days < 128; ++days) {
        RepeatRule rule{kRepeatWeekly, 3, {}};
        for (std::uint64_t day = 1; day <= 7; ++day) {
            if (days >> (day - 1) & 1) rule.weekdays.push_back(day);
        }
        EXPECT_EQ(std::get<RepeatRule>(repeatFromWords(repeatInWords(rule))), rule);
    }
}

}  // namespace
}  // namespace corvane
