// Whatever the date and the rule: a step lands on the rule, keeps the wall-clock time and leaves out no day.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "dates/RepeatArithmetic.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

constexpr int kRounds = 3000;

class RandomRules {
  public:
    std::uint64_t between(std::uint64_t low, std::uint64_t high) {
        return std::uniform_int_distribution<std::uint64_t>(low, high)(engine_);
    }

    /// A whole second of the years 1990 to 2049, in hours that no zone of these tests skips or repeats.
    cctz::civil_second time() {
        const cctz::civil_day day = cctz::civil_day(1990, 1, 1) + static_cast<int>(between(0, 21914));
        const cctz::civil_hour hour = cctz::civil_hour(day) + static_cast<int>(between(4, 21));
        return cctz::civil_second(hour) + static_cast<int>(between(0, 3599));
    }

    std::vector<std::uint64_t> weekdays() {
        std::vector<std::uint64_t> result;
        while (result.empty()) {
            for (std::uint64_t weekday = 1; weekday <= 7; ++weekday) {
                if (between(0, 2) == 0) result.push_back(weekday);
            }
        }
        return result;
    }

  private:
    std::mt19937_64 engine_{20241104};
};

bool hasSameTimeOfDay(const cctz::civil_second& a, const cctz::civil_second& b) {
    return a.hour() == b.hour() && a.minute() == b.minute() && a.second() == b.second();
}

bool holdsListedDay(const cctz::civil_day& first, const cctz::civil_day& end,
                    const std::vector<std::uint64_t>& weekdays) {
    for (cctz::civil_day day = first; day < end; ++day) {
        const auto weekday = static_cast<std::uint64_t>(Calendar::weekday(day));
        if (std::ranges::find(weekdays, weekday) != weekdays.end()) return true;
    }
    return false;
}

TEST(WeeklyRuleProperty, LandsOnTheFirstListedDayOfItsWeek) {
    RandomRules random;
    for (const char* locale : {"en_US", "de_DE", "ar_EG"}) {
        const TestEnvironment environment({.timeZone = "America/New_York", .locale = locale});
        const Calendar calendar = Calendar::current();
        for (int round = 0; round < kRounds; ++round) {
            const cctz::civil_second from = random.time();
            const auto weeks = static_cast<std::int64_t>(random.between(1, 5));
            const std::vector<std::uint64_t> weekdays = random.weekdays();
            const Date result = dateByAddingWeeks(calendar.dateFromCivil(from), weeks, weekdays);
            const cctz::civil_second to = calendar.civilSecond(result);
            SCOPED_TRACE(testing::Message() << locale << " " << from << " to " << to << " weeks " << weeks
                                            << " on " << testing::PrintToString(weekdays));
            EXPECT_TRUE(isAlignedWithWeeklyRepeatWeekdays(result, weekdays));
            EXPECT_TRUE(hasSameTimeOfDay(from, to));

            const cctz::civil_day day(from);
            const cctz::civil_day landed(to);
            const cctz::civil_day endOfWeek = calendar.startOfWeek(day) + 7;
            if (landed < endOfWeek) {
                EXPECT_GT(landed, day);
                EXPECT_FALSE(holdsListedDay(day + 1, landed, weekdays));
                continue;
            }
            EXPECT_EQ(calendar.startOfWeek(landed), calendar.startOfWeek(day) + 7 * weeks);
            const cctz::civil_day steppedTo = day + 7 * weeks;
            const bool isAhead = landed > steppedTo;
            const cctz::civil_day searchedFrom = isAhead ? steppedTo + 1 : calendar.startOfWeek(landed);
            EXPECT_FALSE(holdsListedDay(day + 1, endOfWeek, weekdays));
            EXPECT_FALSE(holdsListedDay(searchedFrom, landed, weekdays));
        }
    }
}

TEST(MonthlyRuleProperty, LandsOnTheNumberedWeekday) {
    RandomRules random;
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = "de_DE"});
    const Calendar calendar = Calendar::current();
    for (int round = 0; round < kRounds; ++round) {
        const cctz::civil_second from = random.time();
        const auto months = static_cast<std::int64_t>(random.between(1, 14));
        const std::uint64_t weekday = random.between(1, 7);
        const int ordinal = static_cast<int>(random.between(1, 5));
        const Date date = calendar.dateFromCivil(from);
        const Date result = dateByAddingMonths(date, months, weekday, static_cast<std::uint64_t>(ordinal));
        const cctz::civil_second to = calendar.civilSecond(result);
        SCOPED_TRACE(testing::Message() << from << " to " << to << " months " << months << " rule " << weekday
                                        << ", " << ordinal);
        EXPECT_GT(result, date);
        EXPECT_TRUE(isAlignedWithMonthlyRepeatWeekday(result, weekday, static_cast<std::uint64_t>(ordinal)));
        EXPECT_TRUE(hasSameTimeOfDay(from, to));
        EXPECT_EQ(static_cast<std::uint64_t>(calendar.weekday(result)), weekday);
        const bool isLast = to.day() + 7 > Calendar::daysInMonth(cctz::civil_month(to));
        EXPECT_TRUE(ordinal == 5 ? isLast : (to.day() + 6) / 7 == ordinal);
        const std::int64_t monthsOn = cctz::civil_month(to) - cctz::civil_month(from);
        EXPECT_TRUE(monthsOn == 0 || monthsOn == months);
    }
}

}  // namespace
}  // namespace corvane
