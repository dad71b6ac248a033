#include "text/QueryComponents.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using Values = std::vector<std::u16string>;

// "key=value,value key=": the keys in their order, each with its list of values.
std::string printed(const QueryTable& table) {
    std::string text;
    for (const auto& [key, value] : table) {
        if (!text.empty()) text += ' ';
        text += utf8FromText(key) + "=";
        const auto& values = std::get<Values>(value);
        for (const std::u16string& one : values) text += (&one == &values[0] ? "" : ",") + utf8FromText(one);
    }
    return text;
}

TEST(QueryComponents, CollectTheValuesOfEachKey) {
    constexpr std::tuple<const char*, const char16_t*, const char*> kRows[] = {
        {"several values, no value",  u"taskid=1&taskid=2&flag",   "taskid=1,2"},
        {"keys in their order",       u"z=1&a=2&z=3",              "z=1,3 a=2" },
        {"a second sign, empty ones", u"a=b=c&d=&=e&&=",           "a=b d= =e,"},
        {"escapes",                   u"a+b=%3D%26&%61+b=2",       "a b==&,2"  },
        {"what does not decode",      u"%=1&%C3=2&a=%zz&a=3&b=%4", "a=3"       },
        {"nothing",                   u"",                         ""          },
    };
    for (const auto& [what, query, expected] : kRows) {
        EXPECT_EQ(printed(dictionaryFromQueryComponents(query)), expected) << what;
    }
}

TEST(QueryComponents, AreThoseBetweenQuestionMarkAndFragment) {
    EXPECT_EQ(printed(queryComponents(u"scheme://localhost/today?taskid=x?1#a?taskid=2").value()),
              "taskid=x?1");
    EXPECT_EQ(queryComponents(u"scheme://localhost/today?"), QueryTable());
    EXPECT_EQ(queryComponents(u"scheme://localhost/today"), std::nullopt);
    EXPECT_EQ(queryComponents(u"scheme://localhost/today#a?b=c"), std::nullopt);
}

TEST(QueryText, WritesListsSinglesAndMissingValues) {
    QueryTable table;
    table[u"none"] = Values{};
    EXPECT_EQ(stringFromQueryComponents(table), std::nullopt);
    table[u"id"] = Values{u"1", u"a b&c"};
    table[u"x"] = u"\u00e9";
    table[u"y"] = {};
    EXPECT_EQ(stringFromQueryComponents(table), u"id=1&id=a+b%26c&x=%C3%A9&y=(null)");
}

TEST(QueryText, LooksValuesUpUnderTheEncodedKey) {
    QueryTable table;
    table[u"\u00e9"] = u"1";
    table[u"%C3%A9"] = u"2";
    EXPECT_EQ(stringFromQueryComponents(table), u"%C3%A9=2&%25C3%25A9=(null)");
}

TEST(QueryComponents, SurviveArbitraryQueries) {
    constexpr std::u16string_view kUnits = u"&&&===%%+abC39\u00e9\xD83D#?";
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        std::u16string query(random() % 40, u' ');
        for (char16_t& unit : query) unit = kUnits[random() % kUnits.size()];
        const QueryTable table = dictionaryFromQueryComponents(query);
        QueryTable writable;
        std::ptrdiff_t valueCount = 0;
        for (const auto& [key, value] : table) {
            ASSERT_TRUE(std::holds_alternative<Values>(value));
            ASSERT_FALSE(std::get<Values>(value).empty());
            valueCount += std::ssize(std::get<Values>(value));
            if (key.find_first_not_of(u"abC39") == key.npos) writable[key] = value;
        }
        ASSERT_LE(valueCount, 1 + std::ranges::count(query, u'&'));
        const auto written = stringFromQueryComponents(writable);
        EXPECT_EQ(dictionaryFromQueryComponents(written.value_or(u"")), writable);
    }
}

TEST(QueryComponents, EndOnLargeQueries) {
    std::u16string query;
    for (char16_t key = 1; query.size() < 5'000'000; ++key) {
        query += {u'k', static_cast<char16_t>(0x4e00 + key % 0x5000), u'=', u'1', u'&'};
    }
    EXPECT_EQ(dictionaryFromQueryComponents(query).size(), 0x5000u);
    EXPECT_EQ(dictionaryFromQueryComponents(std::u16string(5'000'000, u'&')), QueryTable());
    EXPECT_EQ(printed(dictionaryFromQueryComponents(std::u16string(5'000'000, u'='))), "=");
}

}  // namespace
}  // namespace corvane
