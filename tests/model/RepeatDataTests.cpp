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
    constexpr std::pair<const char16_t*, std::int64_t> kRows[] = {
        {u" \t\n+7x9",             7            },
        {u"-3,4",                  -3           },
        {u"- 1",                   0            },
        {u"\u0663",                0            }, // a digit of another script
        {u"9223372036854775808",   Limits::max()},
        {u"-99999999999999999999", Limits::min()},
    };
    for (const auto& [text, value] : kRows) EXPECT_EQ(integerValue(text), value) << value;
}

TEST(MonthlyRepeatData, FiltersOnReadingOnly) {
    const std::tuple<std::optional<std::u16string_view>, std::uint64_t, std::uint64_t> kRows[] = {
        {u"2,3",                    2, 3                   },
        {u"6,3",                    0, 3                   },
        {u"2,3,4",                  0, 0                   },
        {u" 2 , 3x",                2, 3                   },
        {std::nullopt,              0, 0                   },
        {u"1,99999999999999999999", 1, 9223372036854775807u},
    };
    for (const auto& [data, ordinal, weekday] : kRows) {
        EXPECT_EQ(ordinalOfMonthlyRepeatData(data), ordinal);
        EXPECT_EQ(weekdayOfMonthlyRepeatData(data), weekday);
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
