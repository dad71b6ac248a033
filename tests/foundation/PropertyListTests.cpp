#include "platform/foundation/PropertyList.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "PropertyListSamples.h"

namespace corvane {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

PropertyList oneOfEach() {
    return {
        Dictionary{
                   {"boolean", {true}},
                   {"integers",
             {Array{{std::int64_t{0}},
                    {std::int64_t{-1}},
                    {std::numeric_limits<std::int64_t>::max()},
                    {std::numeric_limits<std::int64_t>::min()}}}},
                   {"reals", {Array{{0.5}, {0.1}, {-1e300}}}},
                   {"texts", {Array{{std::string()}, {std::string("Milk")}, {std::string("Äpfel 😀")}}}},
                   {"dates", {Array{{Date(TimeInterval(0.25))}, {kDistantFuture}, {Date(TimeInterval(-6.3e10))}}}},
                   {"data", {Bytes{0, 255, 7}}},
                   {"reference", {PropertyList::Uid{3}}},
                   {"empty",
             {Dictionary{{"array", {Array{}}}, {"dictionary", {Dictionary{}}}, {"data", {Bytes{}}}}}},
                   }
    };
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

TEST(PropertyList, RefusesWhatWouldRunAway) {
    struct Row {
        const char* what;
        Bytes data;
    };
    const Row kRows[] = {
        {"nothing",                                  {}                            },
        {                                                      "text",                          bytesOf("hello")                              },
        {                                       "only the magic",                                          bytesOf("bplist00")                                                         },
        { "itself inside",                                        nestedBinary(1,                                                                      1, 0)},
        {                                                                                                      "itself inside, twice",                                         nestedBinary(1,                                                                     2, 0)},
        {                                                      "a cycle of two",                            nestedBinary(2,                              1, 0)},
        {                                                    "2^60 nodes of 60 objects",                 nestedBinary(60,                2, 60)},
        { "a stack of 100,000 arrays",                                          nestedBinary(100'000,                                              1, 100'000)},
        {                                     "65 levels",                                  nestedBinary(65,                                                                1, 65)},
        {                                                                      "a stack of 100,000 arrays in XML",
         bytesOf(xmlPropertyList(repeated("<array>",     100'000) + repeated("</array>", 100'000)))},
        {                                                          "100 levels in XML", bytesOf(xmlPropertyList(repeated("<array>",100) + repeated("</array>", 100)))},
        {                                        "a million nodes in XML",
         bytesOf(xmlPropertyList("<array>" + repeated("<true/>",            1'000'000) + "</array>"))},
        {"17 MiB",                                          Bytes(17 * 1024 * 1024,                                                 ' ')},
    };
    for (const Row& row : kRows) EXPECT_EQ(propertyListFromData(row.data), std::nullopt) << row.what;
    EXPECT_TRUE(propertyListFromData(nestedBinary(62, 1, 62)));
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
