#include "apps/corvane/TerminalText.h"

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using namespace std::string_literals;

TEST(TerminalText, LeavesNothingThatATerminalObeys) {
    const std::tuple<const char*, std::u16string, std::string_view> kRows[] = {
        {"letters of all kinds",           u"Käse 牛乳 🥛 חלב",           "Käse 牛乳 🥛 חלב"},
        {"an escape sequence",             u"\x1B[31mred\x07",                    "␛[31mred␇"           },
        {"lines, a tab, a null character", u"a\nb\r\tc\0d"s,                      "a␊b␍ c␀d"          },
        {"delete and the second controls", u"\x7F\x9B\x31mx\x85",                 "␡\uFFFD1mx\uFFFD"      },
        {"line and paragraph separators",  u"a\u2028b\u2029c",                    "a␤b␤c"               },
        {"embeddings and overrides",       u"\u202Aa\u202Bb\u202Cc\u202Dd\u202E",
         "\uFFFDa\uFFFDb\uFFFDc\uFFFDd\uFFFD"                                                               },
        {"interlinear annotation",         u"\uFFF9a\uFFFBb",                     "\uFFFDa\uFFFDb"          },
        {"direction marks, which end",     u"a\u200E\u200F\u061C",                "a\u200E\u200F\u061C"     },
        {"unpaired surrogates",            u"a\xD83E b\xDD5B",                    "a\uFFFD b\uFFFD"         },
    };
    for (const auto& [what, text, expected] : kRows) {
        EXPECT_EQ(utf8FromText(terminalText(text)), expected) << what;
    }
    EXPECT_EQ(terminalUtf8("/tmp/\x1B\xFF"), "/tmp/␛\uFFFD");
}

TEST(TerminalText, MeasuresInCells) {
    const std::tuple<const char*, std::u16string_view, std::size_t> kRows[] = {
        {"an accent in one and in two",     u"éé",                     2},
        {"East Asian letters",              u"牛乳",                   4},
        {"full-width and half-width forms", u"Ａｱ",                   3},
        {"Hangul syllable and its jamo",    u"한\u1112\u1161\u11AB",    4},
        {"an emoji",                        u"🥛",                     2},
        {"a text sign, then as an emoji",   u"❤❤️",                3},
        {"a family, joined",                u"👨‍👩‍👧",       2},
        {"a flag",                          u"🇩🇪",                 2},
        {"ambiguous signs of our own",      u"○◉▎♪…",          5},
        {"what has no width",               u"\u200B\u2060\uFEFF\u2068", 0},
    };
    for (const auto& [what, text, cells] : kRows) EXPECT_EQ(displayWidth(text), cells) << what;
}

TEST(TerminalText, CutsWhereAReaderWould) {
    const std::tuple<const char*, std::u16string_view, std::size_t, std::string_view> kRows[] = {
        {"one too many",                    u"Milky",                                 4, "Mil…"               },
        {"one cell",                        u"Milk",                                  1, "…"                  },
        {"none",                            u"Milk",                                  0, ""                     },
        {"no half of a wide letter",        u"牛乳牛乳",                          4, "牛…"               },
        {"a wide letter that just fits",    u"牛乳牛乳",                          5, "牛乳…"            },
        {"an accent stays with its letter", u"abécd",                                4, "abé…"              },
        {"a joined emoji stays whole",      u"👨‍👩‍👧👨‍👩‍👧x", 4, "👨‍👩‍👧…"},
        {"exactly as wide as the place",    u"👨‍👩‍👧👨‍👩‍👧",  4,
         "👨‍👩‍👧👨‍👩‍👧"                                                                 },
    };
    for (const auto& [what, text, width, expected] : kRows) {
        EXPECT_EQ(utf8FromText(cutToWidth(text, width)), expected) << what;
    }
}

TEST(TerminalText, ACutTextIsNeverTooWideNorBrokenInside) {
    const std::u16string text = u"aé牛👨‍👩‍👧🇩🇪한x";
    for (std::size_t width = 0; width <= displayWidth(text) + 1; ++width) {
        const std::u16string cut = cutToWidth(text, width);
        EXPECT_LE(displayWidth(cut), width);
        const std::u16string_view kept(cut.data(), cut.empty() ? 0 : cut.size() - 1);
        EXPECT_EQ(text.substr(0, kept.size()), kept);
        EXPECT_EQ(displayWidth(kept) + displayWidth(text.substr(kept.size())), displayWidth(text));
    }
}

TEST(TerminalText, EndsEvenWhereNothingHasAWidth) {
    const std::u16string marks = u"e" + std::u16string(1'000'000, u'\u0301');
    const std::u16string cut = cutToWidth(marks, 10);
    EXPECT_LT(cut.size(), 1000u);
    EXPECT_EQ(cut.back(), u'…');
    EXPECT_EQ(cutToWidth(std::u16string(5'000'000, u'x'), 3), u"xx…");
}

}  // namespace
}  // namespace corvane
