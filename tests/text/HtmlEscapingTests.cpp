#include "text/HtmlEscaping.h"

#include <algorithm>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace corvane {
namespace {

using namespace std::string_literals;

constexpr std::size_t kTenMegabytes = 5'000'000;  // of UTF-16

void expectStrictlyAscending(const HtmlEntityTable& table) {
    const auto entities = table.entities();
    for (std::size_t i = 1; i < entities.size(); ++i) {
        EXPECT_LT(entities[i - 1].unit, entities[i].unit) << i;
    }
}

TEST(HtmlEntities, AreCompleteSortedAndFoundBothWays) {
    EXPECT_EQ(kHtmlEntities.entities().size(), 253u);
    EXPECT_EQ(kSpecialHtmlEntities.entities().size(), 33u);
    expectStrictlyAscending(kHtmlEntities);
    expectStrictlyAscending(kSpecialHtmlEntities);
    for (const HtmlEntity& entity : kHtmlEntities.entities()) {
        EXPECT_EQ(kHtmlEntities.entityOfUnit(entity.unit), entity);
        EXPECT_EQ(unitOfHtmlReference(entity.reference), entity.unit);
    }
    const auto isInFullTable = [](const HtmlEntity& entity) {
        return kHtmlEntities.contains(entity.unit) && kHtmlEntities.entityOfUnit(entity.unit) == entity;
    };
    EXPECT_TRUE(std::ranges::all_of(kSpecialHtmlEntities.entities(), isInFullTable));
}

TEST(HtmlEntities, HaveTheCodePointsOfHtml4) {
    const HtmlEntity kSamples[] = {
        {u"&apos;",     0x27  },
        {u"&nbsp;",     0xA0  },
        {u"&yuml;",     0xFF  },
        {u"&thetasym;", 0x3D1 },
        {u"&piv;",      0x3D6 },
        {u"&alefsym;",  0x2135},
        {u"&lang;",     0x2329},
        {u"&rang;",     0x232A},
        {u"&diams;",    0x2666},
    };
    for (const HtmlEntity& entity : kSamples) EXPECT_EQ(unitOfHtmlReference(entity.reference), entity.unit);
    EXPECT_FALSE(kSpecialHtmlEntities.contains(0xA0));
    EXPECT_EQ(kSpecialHtmlEntities.entities().back(), (HtmlEntity{u"&euro;", 0x20AC}));
}

TEST(HtmlEscaping, NamesWhatTheTableHolds) {
    EXPECT_EQ(gtm_stringByEscapingForHTML(u""), u"");
    EXPECT_EQ(gtm_stringByEscapingForHTML(u"<b title=\"x\">'R&D'</b>"),
              u"&lt;b title=&quot;x&quot;&gt;&apos;R&amp;D&apos;&lt;/b&gt;");
    EXPECT_EQ(gtm_stringByEscapingForHTML(u"caf\u00e9 \u4e2d \u2014 5\u20ac"),
              u"caf\u00e9 \u4e2d &mdash; 5&euro;");
    EXPECT_EQ(gtm_stringByEscapingForAsciiHTML(u"caf\u00e9 \u4e2d\x7f\x80"),
              u"caf&eacute; &#20013;\x7f&#128;");
}

TEST(HtmlEscaping, WritesASurrogatePairAsTwoReferences) {
    EXPECT_EQ(gtm_stringByEscapingForAsciiHTML(u"\U0001F600"), u"&#55357;&#56832;");
    EXPECT_EQ(gtm_stringByEscapingForHTML(u"\xD83D<"s), u"\xD83D&lt;"s);
}

TEST(HtmlUnescaping, ReplacesWellFormedReferences) {
    constexpr std::pair<const char16_t*, const char16_t*> kRows[] = {
        {u"&lt;&gt; &eacute;",              u"<> \u00e9"   },
        {u"&thetasym;&lang;",               u"\u03d1\u2329"},
        {u"&#65;&#x42;&#X43;",              u"ABC"         },
        {u"&#55357;&#56832;",               u"\U0001F600"  },
        {u"&# 65; &#\u2028+65; &#x\t0x4A;", u"A A J"       },
        {u"&#1;&#65534;",                   u"\u0001\xFFFE"},
        {u"&#0000065;&#x00000a9;",          u"A&#x00000a9;"}, // 10 units and 11
        {u"&#65&#66;",                      u"&#65B"       },
        {u"&amp;lt;",                       u"&lt;"        },
        {u"&&lt;&lt&gt;;&amp",              u"&<&lt>;&amp" },
    };
    for (const auto& [text, expected] : kRows) EXPECT_EQ(gtm_stringByUnescapingFromHTML(text), expected);
}

TEST(HtmlUnescaping, LeavesEverythingElse) {
    constexpr const char16_t* kTexts[] = {
        u"",         u"&",        u"a;b&",       u"&;",      u"&a;",       u"&#;",       u"&#x;",
        u"&#x0x;",   u"&LT;",     u"&nbsp",      u"&Eacute", u"&unknown;", u"&#0;",      u"&#x0;",
        u"&#65535;", u"&#xFFFF;", u"&#-65;",     u"&#65a;",  u"&#65 ;",    u"&#x4G;",    u"&#x+41;",
        u"&#+ 65;",  u"&# ;",     u"&#9999999;", u"& lt;",   u"&#xD83D\n", u"&#x \v41;", u"&thetasymx;"};
    for (const char16_t* text : kTexts) EXPECT_EQ(gtm_stringByUnescapingFromHTML(text), text);
}

TEST(HtmlEscaping, IsUndoneByUnescaping) {
    std::mt19937 random(20240305);
    constexpr std::u16string_view kFrequent = u"abc&<>\"';#x0\u00e9\u20ac\u2028";
    for (int round = 0; round < 3000; ++round) {
        std::u16string text(random() % 60, u'a');
        for (char16_t& unit : text) {
            const bool isFrequent = random() % 4 != 0;
            unit = isFrequent ? kFrequent[random() % kFrequent.size()]
                              : static_cast<char16_t>(random() % 0xFFFF);
        }
        const std::u16string html = gtm_stringByEscapingForHTML(text);
        EXPECT_EQ(html.find_first_of(u"<>\"'\u20ac"), html.npos);
        EXPECT_EQ(stringByDecodingHTMLEntities(html), text);
        const std::u16string ascii = stringByEncodingHTMLEntities(text);
        EXPECT_TRUE(std::ranges::all_of(ascii, [](char16_t unit) { return unit < 0x80; }));
        EXPECT_EQ(ascii.find_first_of(u"<>\"'"), ascii.npos);
        EXPECT_EQ(stringByDecodingHTMLEntities(ascii), text);
    }
}

TEST(HtmlEscaping, EndsOnLargeTexts) {
    for (const char16_t unit : u"&;"s) {
        const std::u16string text(kTenMegabytes, unit);
        EXPECT_TRUE(gtm_stringByUnescapingFromHTML(text) == text);
    }
}

}  // namespace
}  // namespace corvane
