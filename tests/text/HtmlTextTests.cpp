#include "text/HtmlText.h"

#include <string>

#include <gtest/gtest.h>

namespace corvane {
namespace {

using namespace std::string_literals;

constexpr std::size_t kTenMegabytes = 5'000'000;  // of UTF-16

struct Row {
    const char* what;
    std::u16string text;
    std::u16string expected;
};

template <std::size_t N>
void expectRows(std::u16string (*operation)(std::u16string_view), const Row (&rows)[N]) {
    for (const Row& row : rows) EXPECT_EQ(operation(row.text), row.expected) << row.what;
}

TEST(HtmlToPlainText, SeparatesWordsByBlocksAndWhiteSpace) {
    const Row kRows[] = {
        {"a closing block tag adds a blank",      u"<p>Hello</p><p>World</p>",         u"Hello World " },
        {"nor before any text",                   u"</p></div>a",                      u"a"            },
        {"inline tags join, in any case",         u"<b>a</b>b</STRONG>c</acronym>d",   u"abcd"         },
        {"letters end an inline name",            u"a</b1>b</bx>c</ b>d</>e",          u"ab c d e"     },
        {"comments join",                         u"a<!-- </p> <b> -- > -->b<!--->c",  u"ab"           },
        {"white space collapses",                 u" \t a \r\n\f\u0085\u2028\u2029b ", u"a b"          },
        {"blanks of tags and white space add up", u"a </p> b",                         u"a   b"        },
        {"references are decoded last",           u"a &amp;&lt;b&gt;&nbsp;",           u"a &<b>\u00a0" },
        {"a lone less-than sign starts a tag",    u"1 < 2, 3 > 2, 4 < 5",              u"1  2, 4 "     },
        {"lone surrogates pass",                  u"\xD83D<b>\xDE00"s,                 u"\xD83D\xDE00"s},
    };
    expectRows(stringByConvertingHTMLToPlainText, kRows);
}

TEST(StrippingTags, CollapsesWhiteSpaceOnlyWhereThereAreTags) {
    const Row kRows[] = {
        {"no tag: unchanged",             u"a  b > c\n",                u"a  b > c\n"     },
        {"blanks of tags collapse",       u"<p>a</p>  <em>b</em>c<br>", u"a bc"           },
        {"references and comments' text", u"a &amp; b<!-- c > d -->",   u"a &amp; b d -->"},
        {"an unterminated tag stays",     u" a  <b ",                   u"a <b"           },
    };
    expectRows(stringByStrippingTags, kRows);
}

TEST(NewLinesAsBRs, CountsCarriageReturnAndLineFeedOnceAtTheStartOfARun) {
    const Row kRows[] = {
        {"one",                 u"a\r\nb",                 u"a<br />b"                  },
        {"two",                 u"\n\n",                   u"<br /><br />"              },
        {"a pair inside a run", u"\n\r\na",                u"<br /><br /><br />a"       },
        {"all kinds, no tab",   u"\f\u0085\t\u2028\u2029", u"<br /><br />\t<br /><br />"},
    };
    expectRows(stringWithNewLinesAsBRs, kRows);
}

// Marks each address in brackets up as a link.
std::u16string withLinks(std::u16string text) {
    for (std::size_t start = text.find(u'['); start != text.npos; start = text.find(u'[')) {
        const std::size_t end = text.find(u']', start);
        const std::u16string address = text.substr(start + 1, end - start - 1);
        text.replace(start, end + 1 - start,
                     u"<a href=\"" + address + u"\" class=\"linkified\">" + address + u"</a>");
    }
    return text;
}

TEST(Linkifying, WrapsWebAddresses) {
    constexpr const char16_t* kTexts[] = {
        u"no address, no dot: http://localhost, http://, ftp://a.b",
        u"See [http://a.org/b?c=1&d]. And [https://a.b], [http://c-d.e_f#g]!",
        u"([http://b\u00fccher.\u4e2d])",
        u"[http://a.b/%20x&amp;]",
        u"<a href=\"http://a.b\">='[http://a.b]'",
        u"inside a word, in capitals: xhttp://a.b HTTP://a.b",
        u"[http://a.b]!c",
    };
    for (const std::u16string text : kTexts) {
        std::u16string withoutBrackets = text;
        std::erase_if(withoutBrackets, [](char16_t unit) { return unit == u'[' || unit == u']'; });
        EXPECT_EQ(stringByLinkifyingURLs(withoutBrackets), withLinks(text));
    }
}

TEST(Linkifying, LeavesATextThatTheSearchCannotHold) {
    std::u16string text = u"http://a";
    while (text.size() < kTenMegabytes) text += u".b";
    EXPECT_TRUE(stringByLinkifyingURLs(text) == text);
}

TEST(HtmlText, EndsOnLargeTexts) {
    for (const char16_t* pattern : {u"<!--", u"</p>", u"\r\n "}) {
        std::u16string text;
        while (text.size() < kTenMegabytes) text += pattern;
        EXPECT_LE(stringByConvertingHTMLToPlainText(text).size(), text.size());
        EXPECT_LE(stringByStrippingTags(text).size(), text.size());
        EXPECT_GE(stringWithNewLinesAsBRs(text).size(), text.size());
        EXPECT_LE(stringByRemovingNewLinesAndWhitespace(text).size(), text.size());
    }
}

}  // namespace
}  // namespace corvane
