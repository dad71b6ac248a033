#include "text/QueryComponents.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Values = std::vector<std::u16string>;

TEST(QueryComponents, CollectTheValuesOfEachKeyInOrder) {
    EXPECT_EQ(dictionaryFromQueryComponents(u"taskid=1&taskid=2&flag"),
              (QueryTable{
                  {u"taskid", Values{u"1", u"2"}}
    }));
    EXPECT_EQ(dictionaryFromQueryComponents(u"z=1&a=2&z=3"),
              (QueryTable{
                  {u"z", Values{u"1", u"3"}},
                  {u"a", Values{u"2"}      }
    }));
    EXPECT_EQ(dictionaryFromQueryComponents(u"a=b=c&d=&=e&&="),
              (QueryTable{
                  {u"a", Values{u"b"}     },
                  {u"d", Values{u""}      },
                  {u"",  Values{u"e", u""}}
    }));
    EXPECT_EQ(dictionaryFromQueryComponents(u"a+b=%3D%26&%61+b=2"), (QueryTable{
                                                                        {u"a b", Values{u"=&", u"2"}}
    }));
    EXPECT_EQ(dictionaryFromQueryComponents(u""), QueryTable());
}

TEST(QueryComponents, LeaveOutWhatDoesNotDecode) {
    EXPECT_EQ(dictionaryFromQueryComponents(u"%=1&%C3=2&a=%zz&a=3&b=%4"), (QueryTable{
                                                                              {u"a", Values{u"3"}}
    }));
}

TEST(QueryComponents, AreThoseBetweenQuestionMarkAndFragment) {
    const QueryTable kTask{
        {u"taskid", Values{u"x?1"}}
    };
    EXPECT_EQ(queryComponents(u"scheme://localhost/today?taskid=x?1#a?taskid=2"), kTask);
    EXPECT_EQ(queryComponents(u"?taskid=x%3F1"), kTask);
    EXPECT_EQ(queryComponents(u"scheme://localhost/today?"), QueryTable());
    EXPECT_EQ(queryComponents(u"scheme://localhost/today"), std::nullopt);
    EXPECT_EQ(queryComponents(u"scheme://localhost/today#a?b=c"), std::nullopt);
}

TEST(QueryText, WritesListsSinglesAndMissingValues) {
    EXPECT_EQ(stringFromQueryComponents({
                  {u"id", Values{u"1", u"a b&c"}},
                  {u"x",  u"\u00e9"             },
                  {u"y",  {}                    }
    }),
              u"id=1&id=a+b%26c&x=%C3%A9&y=(null)");
    EXPECT_EQ(stringFromQueryComponents({
                  {u"none", Values{}   },
                  {u"x",    Values{u""}}
    }),
              u"x=");
    EXPECT_EQ(stringFromQueryComponents({
                  {u"none", Values{}}
    }),
              std::nullopt);
    EXPECT_EQ(stringFromQueryComponents({}), std::nullopt);
}

TEST(QueryText, LooksValuesUpUnderTheEncodedKey) {
    EXPECT_EQ(stringFromQueryComponents({
                  {u"a b", Values{u"1"}}
    }),
              u"a+b=(null)");
    EXPECT_EQ(stringFromQueryComponents({
                  {u"\u00e9", u"1"},
                  {u"%C3%A9", u"2"}
    }),
              u"%C3%A9=2&%25C3%25A9=(null)");
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
    const std::u16string equals(5'000'000, u'=');
    EXPECT_EQ(dictionaryFromQueryComponents(equals), (QueryTable{
                                                         {u"", Values{u""}}
    }));
}

}  // namespace
}  // namespace corvane
