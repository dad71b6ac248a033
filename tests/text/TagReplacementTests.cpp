#include "text/TagReplacement.h"

#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr std::size_t kTenMegabytes = 5'000'000;  // of UTF-16

std::vector<std::u16string> distinctTags(std::u16string_view text) {
    std::vector<std::u16string> tags;
    for (std::size_t start = text.find(u'<'); start != text.npos; start = text.find(u'<', start)) {
        const std::size_t end = std::min(text.find(u'>', start), text.size());
        const std::u16string tag = std::u16string(text.substr(start, end - start)) + u'>';
        if (std::ranges::find(tags, tag) == tags.end()) tags.push_back(tag);
        start = end;
    }
    return tags;
}

// One pass over the whole text for each tag text: slow, and the definition of the result.
std::u16string replacedOneByOne(std::u16string text) {
    const std::vector<std::u16string> kInline = {u"<a>",      u"</a>",      u"<span>", u"</span>",
                                                 u"<strong>", u"</strong>", u"<em>",   u"</em>"};
    for (const std::u16string& tag : distinctTags(text)) {
        const std::u16string replacement = std::ranges::find(kInline, tag) == kInline.end() ? u" " : u"";
        for (std::size_t found = text.find(tag); found != text.npos;) {
            text.replace(found, tag.size(), replacement);
            found = text.find(tag, found + replacement.size());
        }
    }
    return text;
}

TEST(TagReplacement, TakesTheTagTextsInTheirOrder) {
    constexpr std::tuple<const char*, const char16_t*, const char16_t*> kRows[] = {
        {"inline tags vanish, others become blanks",       u"<em>a</em><b>c</b>",     u"a c "   },
        {"attributes make a tag no inline tag",            u"a<a href='x'>b</a><A>c", u"a b c"  },
        {"the inner tag text first",                       u"<b>x<a<b>y",             u" x<a y" },
        {"the outer tag text first",                       u"<a<b>y<b>x",             u" y x"   },
        {"what is left makes a later tag text",            u"<em><e<em>m>, <em >",    u"<em>,  "},
        {"what is left and a blank make a later tag text", u"<b><a<b>c><a c>",        u"   "    },
        {"an unterminated tag stays",                      u"a<b",                    u"a<b"    },
        {"an unterminated tag counts with its end",        u"<em>,<<em>y>,<y",        u", ,<y"  },
    };
    for (const auto& [what, text, expected] : kRows) {
        SCOPED_TRACE(what);
        EXPECT_EQ(replacedOneByOne(text), stringByReplacingTags(text));
        EXPECT_EQ(stringByReplacingTags(text), expected);
    }
}

TEST(TagReplacement, EqualsReplacingOneByOne) {
    const std::u16string kTokens[] = {u"<",  u">",  u"<em>", u"<b>", u"m>", u"<e",     u"a",
                                      u"<b", u"b>", u"</a>", u" ",   u"<a", u"<e<em>m"};
    std::mt19937 random(3);
    for (int round = 0; round < 30000; ++round) {
        const std::size_t tokenCount = 2 + random() % (std::size(kTokens) - 1);
        std::u16string text;
        for (std::size_t length = random() % 40; length > 0; --length) text += kTokens[random() % tokenCount];
        ASSERT_EQ(stringByReplacingTags(text), replacedOneByOne(text)) << testing::PrintToString(text);
    }
}

std::u16string distinctTagTexts(std::size_t count) {
    std::u16string text;
    for (std::size_t number = 0; number < count; ++number) {
        text += u"<t";
        for (std::size_t rest = number; rest > 0; rest /= 16) text += static_cast<char16_t>(u'A' + rest % 16);
        text += u'>';
    }
    return text;
}

TEST(TagReplacement, EndsOnManyDistinctTags) {
    EXPECT_EQ(stringByReplacingTags(distinctTagTexts(1'000'000)), std::u16string(1'000'000, u' '));
    EXPECT_EQ(stringByReplacingTags(distinctTagTexts(200'000) + u"<b><a<b>"),
              std::u16string(200'001, u' ') + u"<a ");
}

TEST(TagReplacement, EndsOnNestedTags) {
    std::u16string text;
    std::size_t depth = 0;
    while (text.size() < kTenMegabytes) text += std::u16string(++depth, u'<') + u'>';
    // Every text ends with the first one, "<>".
    std::u16string expected;
    for (std::size_t rest = 0; rest < depth; ++rest) expected += std::u16string(rest, u'<') + u' ';
    EXPECT_TRUE(stringByReplacingTags(text) == expected);
}

}  // namespace
}  // namespace corvane
