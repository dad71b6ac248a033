#include "platform/foundation/Locale.h"

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"
#include "support/ProcessVariable.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

std::string written(const char* civil, const std::u16string& pattern) {
    return utf8FromText(Locale::current().stringFromDate(at(civil), pattern, Calendar::current()));
}

TEST(Locale, ReadsTheNamesOfTheCLibrary) {
    constexpr std::pair<const char*, const char*> kRows[] = {
        {"de_DE.UTF-8",       "de_DE"      },
        {"C.UTF-8",           "en_US_POSIX"},
        {"",                  "en_US_POSIX"},
        {"sr_RS.UTF-8@latin", "sr_Latn_RS" },
        {"en-GB",             "en_GB"      },
        {"ca_ES@valencia",    "ca_ES"      },
    };
    for (const auto& [name, identifier] : kRows) EXPECT_EQ(Locale(name).identifier(), identifier) << name;
    for (const char* broken : {"../../etc/passwd", "@", ".", "xx@=;=", "_____", "\xff\xfe"}) {
        EXPECT_FALSE(Locale(broken).shortTimePattern().empty()) << broken;
    }
}

TEST(Locale, FollowsTheProcessInTheCLibrarysOrder) {
    const TestEnvironment environment({.locale = ""});
    const ProcessVariable all("LC_ALL", nullptr);
    const ProcessVariable time("LC_TIME", nullptr);
    const ProcessVariable language("LANG", "de_DE.UTF-8");
    const Locale& german = Locale::current();
    EXPECT_EQ(german.identifier(), "de_DE");
    const ProcessVariable french("LC_TIME", "fr_FR.UTF-8");
    EXPECT_EQ(Locale::current().identifier(), "fr_FR");
    const ProcessVariable swedish("LC_ALL", "sv_SE.UTF-8");
    EXPECT_EQ(Locale::current().identifier(), "sv_SE");
    environment->locale = "fa_IR";
    EXPECT_EQ(Locale::current().identifier(), "fa_IR");
    EXPECT_TRUE(Locale::current().isRightToLeft());
    EXPECT_EQ(german.identifier(), "de_DE");
}

TEST(Locale, WritesDatesInItsOrderAndDigitsAndInTheGregorianCalendar) {
    constexpr std::tuple<const char*, const char*, const char*, const char*> kRows[] = {
        {"en_US", "Tue, Mar 5",                     "Tue, Mar 5, 2024",                        "2:07\u202FPM"},
        {"th_TH", "อ. 5 มี.ค.",             "อ. 5 มี.ค. 2024",                 "14:07"       },
        {"ar_EG", "الثلاثاء، ٥ مارس", "الثلاثاء، ٥ مارس ٢٠٢٤", "٢:٠٧ م"  },
        {"fa_IR", "سه‌شنبه ۵ مارس",    "سه‌شنبه ۵ مارس ۲۰۲۴",    "۱۴:۰۷"   },
    };
    for (const auto& [locale, day, dayAndYear, time] : kRows) {
        SCOPED_TRACE(locale);
        const TestEnvironment environment({.timeZone = "Asia/Kathmandu", .locale = locale});
        const Locale& current = Locale::current();
        EXPECT_EQ(written("2024-03-05 14:07", current.patternForSkeleton("EEEMMMd")), day);
        EXPECT_EQ(written("2024-03-05 14:07", current.patternForSkeleton("EEEMMMdyyyy")), dayAndYear);
        EXPECT_EQ(written("2024-03-05 14:07", current.shortTimePattern()), time);
    }
}

TEST(Locale, WritesTheCivilFieldsOfTheCalendar) {
    const std::u16string full = u"y-MM-dd HH:mm:ss.SSS";
    constexpr std::tuple<const char*, const char*, const char*> kRows[] = {
        {"America/Sao_Paulo", "2018-11-04",              "2018-11-04 01:00:00.000"},
        {"Europe/Berlin",     "1500-02-28 23:59:59.250", "1500-02-28 23:59:59.250"},
    };
    for (const auto& [zone, civil, expected] : kRows) {
        SCOPED_TRACE(civil);
        const TestEnvironment environment({.timeZone = zone});
        EXPECT_EQ(written(civil, full), expected);
    }
}

TEST(Locale, KeepsAnswersRightOverManyPatterns) {
    const TestEnvironment environment;
    for (int round = 0; round < 2; ++round) {
        for (char16_t letter = u'a'; letter <= u'z'; ++letter) {
            const std::u16string pattern = std::u16string(u"d'") + letter + u"'";
            EXPECT_EQ(written("2024-03-05", pattern), std::string("5").append(utf8FromText({&letter, 1})));
        }
    }
}

TEST(Locale, ReadsWhatFitsThePatternAsAWhole) {
    constexpr std::tuple<const char*, const char16_t*, const char*, const char*> kRows[] = {
        {"en_US", u"2:30\u202FPM", "time", "2024-03-05 14:30"},
        {"en_US", u"12:05 AM",     "time", "2024-03-05 00:05"},
        {"de_DE", u"9:05",         "time", "2024-03-05 09:05"},
        {"de_DE", u"1.2.25",       "date", "2025-02-01 08:00"},
        {"de_DE", u"24:00",        "time", "none"            },
        {"de_DE", u"30.2.25",      "date", "none"            },
        {"de_DE", u"9:05 Uhr",     "time", "none"            },
        {"de_DE", u" 9:05",        "time", "2024-03-05 09:05"},
        {"en_US", u"14:30",        "time", "none"            },
    };
    for (const auto& [locale, text, skeleton, expected] : kRows) {
        SCOPED_TRACE(std::string(locale) + " " + utf8FromText(text));
        const TestEnvironment environment({.locale = locale});
        const Locale& current = Locale::current();
        const bool isTime = std::string_view(skeleton) == "time";
        const auto civil =
            current.civilFromString(text, isTime ? current.shortTimePattern() : current.shortDatePattern(),
                                    cctz::civil_second(2024, 3, 5, 8, 0, 0));
        EXPECT_EQ(civil ? civilText(Calendar::current().dateFromCivil(*civil)) : "none", expected);
    }
}

TEST(Locale, ComparesByItsAlphabetWithoutCase) {
    constexpr std::tuple<const char*, const char16_t*, const char16_t*, int> kRows[] = {
        {"en_US", u"milk",      u"MILK",      0 },
        {"en_US", u"resume",    u"résumé",  -1},
        {"de_DE", u"Äpfel",    u"Zebra",     -1},
        {"sv_SE", u"Äpple",    u"Zebra",     1 },
        {"en_US", u"ﬀ\xD800", u"ﬀ\xD800", 0 },
    };
    for (const auto& [locale, a, b, sign] : kRows) {
        const int order = Locale(locale).localizedCaseInsensitiveCompare(a, b);
        EXPECT_EQ((order > 0) - (order < 0), sign) << locale << " " << utf8FromText(a);
    }
}

}  // namespace
}  // namespace corvane
