#include "text/UrlEncoding.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

namespace corvane {
namespace {

using namespace std::string_literals;

const std::u16string kLoneSurrogate = u"a b\xD83D"s;

TEST(UrlEncoding, KeepsUnreservedCharactersOnly) {
    std::u16string ascii;
    for (char16_t unit = 0x20; unit < 0x80; ++unit) ascii += unit;
    const std::u16string kLetters =
        u"%40ABCDEFGHIJKLMNOPQRSTUVWXYZ%5B%5C%5D%5E_%60abcdefghijklmnopqrstuvwxyz%7B%7C%7D~%7F";
    const std::u16string kDigits = u"0123456789%3A%3B%3C%3D%3E%3F";
    EXPECT_EQ(stringByURLEncodingString(ascii), u"%20!%22%23%24%25%26%27()*%2B%2C-.%2F" + kDigits + kLetters);
    EXPECT_EQ(stringByURLEncodingForURI(ascii),
              u"%20%21%22%23%24%25%26%27%28%29%2A%2B%2C-.%2F" + kDigits + kLetters);
    EXPECT_EQ(stringByURLEncodingStringParameter(ascii),
              u"+%21%22%23%24%25%26%27%28%29%2A%2B%2C-.%2F" + kDigits + kLetters);
}

TEST(UrlEncoding, WritesTheBytesOfUtf8) {
    EXPECT_EQ(stringByURLEncodingStringParameter(u"\u00e9 \u4e2d\U0001F600"),
              u"%C3%A9+%E4%B8%AD%F0%9F%98%80");
    EXPECT_EQ(stringByURLEncodingString(u"\n\t\u007f\ufffc"), u"%0A%09%7F%EF%BF%BC");
    EXPECT_EQ(stringByURLEncodingForURI(u"\0"s), u"%00");
}

TEST(UrlEncoding, LeavesATextWithALoneSurrogate) {
    EXPECT_EQ(stringByURLEncodingString(kLoneSurrogate), std::nullopt);
    EXPECT_EQ(stringByURLEncodingForURI(kLoneSurrogate), kLoneSurrogate);
    EXPECT_EQ(stringByURLEncodingStringParameter(kLoneSurrogate), kLoneSurrogate);
}

TEST(UrlDecoding, ReadsEscapesAsUtf8) {
    EXPECT_EQ(stringByURLDecodingString(u"%c3%A9+%F0%9F%98%80%00"), u"\u00e9+\U0001F600\0"s);
    EXPECT_EQ(stringByURLDecodingStringParameter(u"a+b%2Bc%20"), u"a b+c ");
    EXPECT_EQ(stringByURLDecodingString(u"\u00e9%41\xD83D"s), u"\u00e9A\xD83D"s);
    EXPECT_EQ(stringByURLDecodingString(u""), u"");
}

TEST(UrlDecoding, HasNoResultForMalformedEscapesAndBytes) {
    constexpr const char16_t* kTexts[] = {u"%",      u"a%4",    u"%zz",       u"%4g",          u"%41%",
                                          u"%+1",    u"%80",    u"%C3",       u"%C3x%A9",      u"%C3\u00e9",
                                          u"%C0%80", u"%E4%B8", u"%ED%A0%80", u"%F4%90%80%80", u"%FF"};
    for (const char16_t* text : kTexts) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_EQ(stringByURLDecodingString(text), std::nullopt);
        EXPECT_EQ(stringByURLDecodingStringParameter(text), std::nullopt);
    }
}

TEST(UrlDecoding, UndoesEncoding) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::u16string text(random() % 40, u' ');
        for (char16_t& unit : text) unit = static_cast<char16_t>(random() % (random() % 2 ? 0x80 : 0xD800));
        text += u"\U0010FFFF\U00010000";
        EXPECT_EQ(stringByURLDecodingString(stringByURLEncodingString(text).value()), text);
        EXPECT_EQ(stringByURLDecodingString(stringByURLEncodingForURI(text)), text);
        EXPECT_EQ(stringByURLDecodingStringParameter(stringByURLEncodingStringParameter(text)), text);
    }
}

TEST(UrlEncoding, EndsOnLargeTexts) {
    const std::u16string text(5'000'000, u'\u4e2d');
    const std::u16string encoded = stringByURLEncodingForURI(text);
    EXPECT_EQ(encoded.size(), 9 * text.size());
    EXPECT_TRUE(stringByURLDecodingString(encoded) == text);
    EXPECT_EQ(stringByURLDecodingString(encoded + u'%'), std::nullopt);
}

}  // namespace
}  // namespace corvane
