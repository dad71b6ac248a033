#include "model/RepeatData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(IntegerValue, ReadsTheNumberThatATextBeginsWith) {
    using Limits = std::numeric_limits<std::int64_t>;
    struct Row {
        const char16_t* text;
        std::int64_t value;
    };
    constexpr Row kRows[] = {
        {u" \t\n+7x9",             7            },
        {u"-3,4",                  -3           },
        {u"- 1",                   0            },
        {u"\u0663",                0            }, // a digit of another script
        {u"9223372036854775808",   Limits::max()},
        {u"-99999999999999999999", Limits::min()},
    };
    for (const Row& row : kRows) EXPECT_EQ(integerValue(row.text), row.value) << row.value;
}

TEST(MonthlyRepeatData, FiltersOnReadingOnly) {
    struct Row {
        std::optional<std::u16string_view> data;
        std::uint64_t ordinal, weekday;
    };
    const Row kRows[] = {
        {u"2,3",                    2, 3                   },
        {u"6,3",                    0, 3                   },
        {u"2,3,4",                  0, 0                   },
        {u" 2 , 3x",                2, 3                   },
        {std::nullopt,              0, 0                   },
        {u"1,99999999999999999999", 1, 9223372036854775807u},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(ordinalOfMonthlyRepeatData(row.data), row.ordinal);
        EXPECT_EQ(weekdayOfMonthlyRepeatData(row.data), row.weekday);
    }
}

TEST(MonthlyRepeatData, IsWrittenWhenBothNumbersAreThere) {
    EXPECT_EQ(monthlyRepeatData(5, 1001), u"5,1001");
    EXPECT_EQ(monthlyRepeatData(0, 3), std::nullopt);
    EXPECT_EQ(monthlyRepeatData(2, 0), std::nullopt);
    EXPECT_EQ(monthlyRepeatData(0x1'0000'0002, 0xFFFF'FFFF), u"2,-1") << "32 bits, signed";
}

TEST(WeeklyRepeatData, KeepsOrderAndRepetitions) {
    const std::vector<std::uint64_t> weekdays = {6, 2, 2, 18446744073709551615u};
    EXPECT_EQ(weeklyRepeatData(weekdays), u"6,2,2,18446744073709551615");
    EXPECT_EQ(weeklyRepeatData({}), std::nullopt);
    EXPECT_THAT(weekdaysOfWeeklyRepeatData(u"6,2, 2,x"), ElementsAre(6u, 2u, 2u, 0u));
    EXPECT_THAT(weekdaysOfWeeklyRepeatData(u"-1"), ElementsAre(18446744073709551615u));
    EXPECT_THAT(weekdaysOfWeeklyRepeatData(u""), ElementsAre(0u));
    EXPECT_THAT(weekdaysOfWeeklyRepeatData(std::nullopt), IsEmpty());
}

}  // namespace
}  // namespace corvane
