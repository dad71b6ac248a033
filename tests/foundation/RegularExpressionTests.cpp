#include "platform/foundation/RegularExpression.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(RegularExpression, MatchesWholeTexts) {
    const auto word = RegularExpression::compile(u"\\p{L}+");
    ASSERT_TRUE(word);
    EXPECT_EQ(word->matches(u"Äpfel"), true);
    EXPECT_EQ(word->matches(u"Äpfel 2"), false);
    constexpr bool kIgnoresCase = true;
    EXPECT_EQ(RegularExpression::compile(u"ä.*", kIgnoresCase)->matches(u"ÄPFEL"), true);
    EXPECT_EQ(RegularExpression::compile(u"")->matches(u""), true);
}

TEST(RegularExpression, RefusesWhatIsNone) {
    const std::u16string deep = std::u16string(20'000, u'(') + std::u16string(20'000, u')');
    for (const std::u16string& pattern : {std::u16string(u"("), std::u16string(u"[a"), std::u16string(u"*"),
                                          std::u16string(u"a{99999999999}"), deep}) {
        EXPECT_FALSE(RegularExpression::compile(pattern)) << pattern.size();
    }
}

TEST(RegularExpression, GivesUpOnRunawayPatterns) {
    const std::u16string many(50'000, u'a');
    const auto runaway = RegularExpression::compile(u"(a+)+b");
    EXPECT_TRUE(runaway->matches(many) == std::nullopt);
    EXPECT_TRUE(runaway->replaceAll(many, u"") == std::nullopt);
    EXPECT_EQ(runaway->matches(u"aab"), true);
}

TEST(RegularExpression, ReplacesWithGroups) {
    const auto tag = RegularExpression::compile(u"<(\\w+)>");
    EXPECT_EQ(tag->replaceAll(u"<b>Milk<i>", u"[$1]"), u"[b]Milk[i]");
    EXPECT_EQ(tag->replaceAll(u"Milk", u"[$1]"), u"Milk");
    EXPECT_EQ(tag->replaceAll(u"<b>", u"$7"), std::nullopt);
}

}  // namespace
}  // namespace corvane
