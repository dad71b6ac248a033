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
    values["boolean"].value = true;
    values["integers"].value = Array{{std::int64_t{-1}}, {kSmallest}, {kLargest}};
    values["reals"].value = Array{{0.5}, {0.1}, {-1e300}};
    values["texts"].value = Array{{std::string()}, {std::string("Äpfel 😀")}};
    values["dates"].value = Array{{Date(TimeInterval(0.25))}, {kDistantFuture}};
    values["data"].value = Bytes{0, 255, 7};
    values["reference"].value = PropertyList::Uid{3};
    values["empty"].value = Array{{Array{}}, {Dictionary{}}, {Bytes{}}};
    return {values};
}

TEST(PropertyList, ReadsWhatItWrote) {
    EXPECT_EQ(propertyListFromData(binaryDataFromPropertyList(oneOfEach())), oneOfEach());
}

bool isRefused(const Bytes& data) { return !propertyListFromData(data); }

TEST(PropertyList, RefusesWhatWouldRunAway) {
    using namespace std::string_literals;
    EXPECT_TRUE(isRefused(Bytes(17 * 1024 * 1024, ' ')));
    EXPECT_TRUE(isRefused(nestedBinary(1, 1, 0))) << "itself inside";
    EXPECT_TRUE(isRefused(nestedBinary(2, 2, 0))) << "a cycle of two";
    EXPECT_TRUE(isRefused(nestedBinary(60, 2, 60))) << "2^60 nodes";
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

}  // namespace
}  // namespace corvane
