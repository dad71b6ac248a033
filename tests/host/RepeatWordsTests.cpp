#include "apps/host/RepeatWords.h"

#include <gtest/gtest.h>

#include <map>

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

void expectEveryRuleToBeReadBack() {
    for (const std::int32_t kind : {kRepeatDaily, kRepeatWeekly, kRepeatMonthly, kRepeatYearly}) {
        for (const std::int32_t interval : {1, 2, 3, 9'999}) {
            const RepeatRule rule{kind, interval};
            EXPECT_EQ(std::get<RepeatRule>(repeatFromWords(repeatInWords(rule))), rule);
        }
    }
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
    EXPECT_EQ(std::get<RepeatRule>(repeatFromWords(repeatInWords(RepeatRule()))), RepeatRule());
}

TEST(RepeatWords, ReadsBackEveryRule) {
    const TestEnvironment environment;
    expectEveryRuleToBeReadBack();
}

// A week comes behind its days, and "every 2 weeks" needs no digit: neither order nor digits are those of
// English.
std::optional<std::string> inGerman(std::string_view key, std::optional<std::int64_t> count) {
    if (key == "every %d weeks" && count == 2) return "vierzehntägig";
    const std::map<std::string_view, const char*> texts = {
        {"none",                  "keine"            },
        {"every day",             "jeden Tag"        },
        {"every week",            "jede Woche"       },
        {"every month",           "jeden Monat"      },
        {"every year",            "jedes Jahr"       },
        {"every %d days",         "alle %d Tage"     },
        {"every %d weeks",        "alle %d Wochen"   },
        {"every %d months",       "alle %d Monate"   },
        {"every %d years",        "alle %d Jahre"    },
        {"%1$@ on %2$@",          "am %2$@ (%1$@)"   },
        {"%1$@, %2$@",            "%1$@ und %2$@"    },
        {"%1$@ on day %2$d",      "%1$@ am %2$d."    },
        {"%1$@ on the %2$@ %3$@", "%1$@ am %2$@ %3$@"},
        {"1st",                   "ersten"           },
        {"2nd",                   "zweiten"          },
        {"3rd",                   "dritten"          },
        {"4th",                   "vierten"          },
        {"last",                  "letzten"          },
        {"day",                   "Tag"              },
        {"working day",           "Arbeitstag"       },
        {"weekend day",           "Wochenendtag"     },
    };
    const auto found = texts.find(key);
    return found == texts.end() ? std::nullopt : std::optional<std::string>(found->second);
}

TEST(RepeatWords, ReadsBackEveryRuleInTheUsersLanguage) {
    const TestEnvironment environment({.locale = "de_DE"});
    environment->translate = inGerman;
    expectEveryRuleToBeReadBack();
    constexpr Row kRows[] = {
        {"  JEDE  woche ",             "jede Woche"               },
        {"every 2 weeks",              "vierzehntägig"           },
        {"am Montag, Fr (jede Woche)", "am Mo und Fr (jede Woche)"},
        {"am (jede Woche)",            "-"                        },
        {"am Mo",                      "-"                        },
        {"alle 0 Tage",                "-"                        },
        {"jeden Montag abend",         "-"                        },
    };
    for (const Row& row : kRows) EXPECT_EQ(again(row.text), row.expected) << row.text;
}

}  // namespace
}  // namespace corvane
