#include "platform/foundation/Text.h"

#include <gtest/gtest.h>

#include "platform/views/Device.h"

namespace corvane {
namespace {

TEST(Text, ReplacesEachIllFormedSequence) {
    constexpr std::tuple<const char*, std::string_view, std::u16string_view> kRows[] = {
        {"two, three and four bytes",  "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", u"ä€😀"               },
        {"zero inside",                {"a\0b", 3},                            {u"a\0b", 3}               },
        {"cut off at the end",         "a\xF0\x9F\x98",                        u"a\uFFFD"                 },
        {"cut off by a letter",        "\xE2\x82z",                            u"\uFFFDz"                 },
        {"too long a form of a slash", "\xC0\xAF",                             u"\uFFFD\uFFFD"            },
        {"surrogate",                  "\xED\xA0\x80",                         u"\uFFFD\uFFFD\uFFFD"      },
        {"beyond the last plane",      "\xF4\x90\x80\x80",                     u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    for (const auto& [what, utf8, text] : kRows) EXPECT_EQ(textFromUtf8(utf8), text) << what;
}

TEST(Text, WritesLoneSurrogatesAsReplacements) {
    EXPECT_EQ(utf8FromText(u"ä€😀"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    const std::u16string lone = {u'a', 0xD83D, u'b', 0xDE00, 0xDE00, 0xD83D, 0xDE00, 0xD83D};
    EXPECT_EQ(utf8FromText(lone), "a\uFFFDb\uFFFD\uFFFD😀\uFFFD");
}

TEST(Device, ComparesVersionsNumberByNumber) {
    constexpr std::tuple<const char16_t*, const char16_t*, int> kRows[] = {
        {u"9.3",                  u"10.0",                  -1},
        {u"10",                   u"10.0.1",                -1},
        {u"13.04",                u"13.4",                  0 },
        {u"x.5",                  u"0.5",                   0 },
        {u"13.b",                 u"13.1",                  -1},
        {u"2.",                   u"2",                     1 },
        {u"99999999999999999999", u"100000000000000000000", -1},
    };
    const auto signOf = [](int order) { return (order > 0) - (order < 0); };
    for (const auto& [a, b, sign] : kRows) {
        SCOPED_TRACE(utf8FromText(a) + " and " + utf8FromText(b));
        EXPECT_EQ(signOf(compareVersionsNumerically(a, b)), sign);
        EXPECT_EQ(signOf(compareVersionsNumerically(b, a)), -sign);
    }
}

}  // namespace
}  // namespace corvane
