#include "platform/foundation/PropertyList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "PropertyListSamples.h"

namespace corvane {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

PropertyList oneOfEach() {
    constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();
    constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
    Dictionary values;
    values["boolean"] = {true};
    values["integers"] = {
        Array{{std::int64_t{0}}, {std::int64_t{-1}}, {kSmallest}, {kLargest}}
    };
    values["reals"] = {
        Array{{0.5}, {0.1}, {-1e300}}
    };
    values["texts"] = {
        Array{{std::string()}, {std::string("Milk")}, {std::string("Äpfel 😀")}}
    };
    values["dates"] = {
        Array{{Date(TimeInterval(0.25))}, {kDistantFuture}, {Date(TimeInterval(-6.3e10))}}
    };
    values["data"] = {
        Bytes{0, 255, 7}
    };
    values["reference"] = {PropertyList::Uid{3}};
    values["empty"] = {
        Array{{Array{}}, {Dictionary{}}, {Bytes{}}}
    };
    return {values};
}

TEST(PropertyList, ReadsWhatItWrote) {
    EXPECT_EQ(propertyListFromData(binaryDataFromPropertyList(oneOfEach())), oneOfEach());
}

TEST(PropertyList, ReadsXml) {
    const auto list = propertyListFromData(bytesOf(xmlPropertyList(
        "<dict><key>a</key><array><true/><integer>-5</integer><real>0.5</real></array><key>b</key><string>x "
        "&amp; ä</string>"
        "<key>c</key><data>AP8H</data><key>d</key><date>4001-01-01T00:00:00Z</date></dict>")));
    const PropertyList expected{
        Dictionary{{"a", {Array{{true}, {std::int64_t{-5}}, {0.5}}}},
                   {"b", {std::string("x & ä")}},
                   {"c", {Bytes{0, 255, 7}}},
                   {"d", {kDistantFuture}}}
    };
    EXPECT_EQ(list, expected);
}

bool isRefused(const Bytes& data) { return !propertyListFromData(data); }

TEST(PropertyList, RefusesWhatWouldRunAway) {
    using namespace std::string_literals;
    EXPECT_TRUE(isRefused(nestedBinary(1, 1, 0))) << "itself inside";
    EXPECT_TRUE(isRefused(nestedBinary(2, 2, 0))) << "a cycle of two";
    EXPECT_TRUE(isRefused(nestedBinary(60, 2, 60))) << "2^60 nodes";
    EXPECT_TRUE(isRefused(nestedBinary(100'000, 1, 100'000)));
    EXPECT_TRUE(isRefused(nestedBinary(65, 1, 65)));
    EXPECT_FALSE(isRefused(nestedBinary(62, 1, 62)));
    const std::string megabyte = "\x5F\x12\x00\x10\x00\x00"s + std::string(1 << 20, 'x');
    EXPECT_TRUE(isRefused(nestedBinary(4, 10, 4, megabyte))) << "10,000 uses of a megabyte";
    EXPECT_FALSE(isRefused(nestedBinary(1, 10, 1, megabyte)));
    EXPECT_TRUE(
        isRefused(bytesOf(xmlPropertyList(repeated("<array>", 100'000) + repeated("</array>", 100'000)))));
    EXPECT_TRUE(isRefused(bytesOf(xmlPropertyList(repeated("<array>", 100) + repeated("</array>", 100)))));
    EXPECT_TRUE(isRefused(bytesOf(xmlPropertyList("<array>" + repeated("<true/>", 1'000'000) + "</array>"))));
}

TEST(PropertyList, RefusesWhatIsNone) {
    for (const char* text : {"", "hello", "bplist00", "<plist>", "<?xml version=\"1.0\"?>"}) {
        EXPECT_TRUE(isRefused(bytesOf(text))) << text;
    }
    EXPECT_TRUE(isRefused(Bytes(17 * 1024 * 1024, ' ')));
}

TEST(PropertyList, RefusesKeysThatAreNoText) {
    const Bytes good = binaryDataFromPropertyList({Dictionary{{"four", {true}}}});
    const auto key = std::search(good.begin(), good.end(), std::begin("four"), std::end("four") - 1);
    const auto offset = static_cast<std::size_t>(key - good.begin());
    Bytes keyWithNul = good;
    keyWithNul.at(offset + 1) = 0;
    EXPECT_TRUE(isRefused(keyWithNul));
    Bytes keyOfNumber = good;
    keyOfNumber.at(offset - 1) = 0x12;  // an integer of four bytes
    EXPECT_TRUE(isRefused(keyOfNumber));
    EXPECT_FALSE(isRefused(good));
}

TEST(PropertyList, SurvivesEveryTruncation) {
    const Bytes binary = binaryDataFromPropertyList(oneOfEach());
    for (std::size_t length = 0; length < binary.size(); ++length) {
        EXPECT_FALSE(propertyListFromData(std::span(binary).first(length))) << length;
    }
    const Bytes xml = bytesOf(xmlPropertyList("<dict><key>a</key><array><data>AP8H</data></array></dict>"));
    for (std::size_t length = 0; length + 9 < xml.size(); ++length) {
        propertyListFromData(std::span(xml).first(length));  // may read; must come back
    }
}

TEST(PropertyList, SurvivesMutations) {
    std::mt19937 random(20'240'305);
    for (const Bytes& good :
         {binaryDataFromPropertyList(oneOfEach()), nestedBinary(10, 2, 10),
          bytesOf(xmlPropertyList("<dict><key>a</key><array><data>AP8H</data></array></dict>"))}) {
        for (int round = 0; round < 3000; ++round) {
            const auto list = propertyListFromData(mutated(good, random));
            ASSERT_TRUE(!list || propertyListFromData(binaryDataFromPropertyList(*list)));
        }
    }
}

TEST(PropertyList, ConvertsNumbers) {
    struct Row {
        PropertyList value;
        std::optional<std::int64_t> integer;
        std::optional<double> number;
    };
    const Row kRows[] = {
        {{true},                                 1,                                        std::nullopt},
        {{std::int64_t{-7}},                     -7,                                       -7.0        },
        {{-7.9},                                 -7,                                       -7.9        },
        {{1e300},                                std::numeric_limits<std::int64_t>::max(), 1e300       },
        {{std::string("12")},                    12,                                       std::nullopt},
        {{std::string(" +12.9 apples")},         12,                                       std::nullopt},
        {{std::string("-99999999999999999999")}, std::numeric_limits<std::int64_t>::min(), std::nullopt},
        {{std::string("+-1")},                   std::nullopt,                             std::nullopt},
        {{std::string("apples")},                std::nullopt,                             std::nullopt},
        {{Bytes{1}},                             std::nullopt,                             std::nullopt},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(&row - kRows);
        EXPECT_EQ(row.value.integer(), row.integer);
        EXPECT_EQ(row.value.number(), row.number);
    }
}

}  // namespace
}  // namespace corvane
