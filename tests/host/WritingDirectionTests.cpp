#include "apps/host/WritingDirection.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(WritingDirection, FindsLettersFromRightToLeft) {
    const std::tuple<const char*, std::u16string_view, bool> kRows[] = {
        {"Latin",                         u"Milk",           false},
        {"Hebrew among Latin",            u"Buy חלב",     true },
        {"a script beyond 16 bits",       u"\U00010800",     true },
        {"Japanese and emoji",            u"牛乳 🥛",    false},
        {"an unpaired surrogate",         u"\xD802",         false},
        {"digits, which follow the rest", u"\u0661 \u2068x", false},
    };
    for (const auto& [what, text, expected] : kRows) EXPECT_EQ(hasRightToLeftText(text), expected) << what;
}

TEST(WritingDirection, AnIsolateCannotBeLeftFromWithin) {
    EXPECT_EQ(isolatedText(u"Milk"), u"\u2068Milk\u2069");
    EXPECT_EQ(isolatedText(u"a\u2069b\u202Ec\u2067d"), u"\u2068a\uFFFDb\uFFFDc\uFFFDd\u2069");
}

}  // namespace
}  // namespace corvane
