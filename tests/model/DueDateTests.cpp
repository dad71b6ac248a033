// Due dates, alerts and repeat rules of a task.
#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "model/CorvaneUserDefaults.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DueDateTest : public ModelTest {
  protected:
    DueDateTest() {
        plant(list(), "Task");
        task_ = &named("Task");
    }

    GTask& task() { return *task_; }

    void setDefaultAlertTime(std::int64_t hour, std::int64_t minute) {
        ASSERT_TRUE(corvaneUserDefaults().setObject(kAlertDefaultHourKey, {hour}));
        ASSERT_TRUE(corvaneUserDefaults().setObject(kAlertDefaultMinuteKey, {minute}));
    }

    static std::string text(std::optional<Date> date) { return date ? civilText(*date) : "none"; }

    /// Due date, alert date and flags: 'd' due date, 't' due time, 'a' alert.
    std::string state() {
        return text(task().dueDate()) + " | " + text(task().alertDate()) + " | " +
               (task().hasDueDate() ? "d" : "") + (task().hasDueTime() ? "t" : "") +
               (task().alertEnabled() ? "a" : "");
    }

  private:
    GTask* task_ = nullptr;
};

TEST_F(DueDateTest, AllDayTasksAreDueAtTheDefaultAlertTime) {
    constexpr std::tuple<std::int64_t, std::int64_t, const char*> kRows[] = {
        {9,  30, "2024-03-10 09:30"},
        {24, 5,  "2024-03-11 00:05"}, // settings are not checked
        {-1, 0,  "2024-03-09 23:00"},
    };
    for (const auto& [hour, minute, expected] : kRows) {
        setDefaultAlertTime(hour, minute);
        task().setDueDate(std::nullopt, kAtTimeOfDay, kNoRepeat, 1);
        task().setDueDate(at("2024-03-10 17:45"), kAllDay, kNoRepeat, 1);
        EXPECT_EQ(state(), expected + std::string(" | none | d"));
        task().setDueDate2(at("2024-03-10 17:45"), kAllDay, kNoRepeat, 1);
        EXPECT_EQ(state(), "2024-03-10 17:45 | none | d");
        task().setDueDate(at("2024-03-10 17:45"), kAllDay, kNoRepeat, 1);
        EXPECT_EQ(state(), "2024-03-10 17:45 | none | d") << "the same date is not moved";
    }
}

TEST_F(DueDateTest, TheAlertKeepsItsDistance) {
    task().setDueDate(at("2024-03-10 10:00"), kAtTimeOfDay, kNoRepeat, 1);
    task().setDateAlert(at("2024-03-10 09:45"));
    EXPECT_EQ(state(), "2024-03-10 10:00 | 2024-03-10 09:45 | dta");
    task().setDueDate(at("2024-03-11 10:00"), kAtTimeOfDay, kNoRepeat, 1);
    EXPECT_EQ(state(), "2024-03-11 10:00 | 2024-03-11 09:45 | dta");
    task().setDueDate(at("2024-03-12 18:00"), kAllDay, kNoRepeat, 1);
    EXPECT_EQ(state(), "2024-03-12 | 2024-03-11 23:45 | da");
    task().setDueDate(std::nullopt, kAllDay, kNoRepeat, 1);
    EXPECT_EQ(state(), "none | none | ");
}

TEST_F(DueDateTest, AlertsNeedADueDate) {
    task().setAlertEnabled(true);
    task().setDateAlert(at("2024-03-10 09:45"));
    EXPECT_EQ(state(), "none | none | ");
    task().setAlertDate(at("2024-01-01 08:00"));
    task().setDueDate(at("2024-03-10 10:00"), kAtTimeOfDay, kNoRepeat, 1);
    EXPECT_EQ(state(), "2024-03-10 10:00 | 2024-03-10 10:00 | dt") << "no distance was known";
    task().setDateAlert(std::nullopt);
    EXPECT_EQ(state(), "2024-03-10 10:00 | none | dt");
}

TEST_F(DueDateTest, TheRepeatDetailLivesAsLongAsTheKind) {
    // Sets a rule, then details of two kinds: only the rule's own kind of detail is taken.
    const auto detailOf = [&](std::int32_t kind, std::int32_t interval,
                              const std::vector<std::uint64_t>& weekdays, std::uint64_t ordinal) {
        task().setDueDate(at("2024-03-10 10:00"), kAtTimeOfDay, kind, interval);
        const std::u16string kept(task().alertRepeatData().value_or(u"none"));
        task().setWeeklyRepeatWeekdays(weekdays);
        task().setMonthlyRepeatWeekdayOrdinal(ordinal, 3);
        return utf8FromText(kept) + " -> " + utf8FromText(task().alertRepeatData().value_or(u"none"));
    };
    EXPECT_EQ(detailOf(kRepeatWeeklyOlder, 0, {6, 2, 4}, 2), "none -> 6,2,4");
    EXPECT_EQ(task().alertRepeatInterval(), 1);
    EXPECT_THAT(task().weeklyRepeatWeekdays(), ElementsAre(6u, 2u, 4u));
    EXPECT_EQ(detailOf(kRepeatWeeklyOlder, 3, {6, 2, 4}, 2), "6,2,4 -> 6,2,4");
    EXPECT_EQ(detailOf(kRepeatMonthly, -2, {6, 2, 4}, 2), "none -> 2,3");
    EXPECT_EQ(task().alertRepeatInterval(), -2);
    EXPECT_EQ(task().monthlyRepeatWeekdayOrdinal(), 2u);
    EXPECT_EQ(task().monthlyRepeatWeekday(), 3u);
    EXPECT_EQ(detailOf(kRepeatMonthly, 1, {}, 0), "2,3 -> none");
    EXPECT_EQ(detailOf(kRepeatDaily, 1, {6, 2, 4}, 2), "none -> none");
    EXPECT_EQ(detailOf(kRepeatWeekly, 1, {6}, 2), "none -> 6");
    EXPECT_EQ(detailOf(kRepeatWeekly, 1, {}, 2), "6 -> none");
    EXPECT_THAT(task().weeklyRepeatWeekdays(), IsEmpty());
}

TEST_F(DueDateTest, SettingWhatIsThereChangesNothing) {
    const auto setAll = [&] {
        task().setDueDate(at("2024-03-10 10:00"), kAtTimeOfDay, kRepeatMonthly, 2);
        task().setMonthlyRepeatWeekdayOrdinal(2, 3);
        task().setDateAlert(at("2024-03-10 09:45"));
        task().setRegionAlert(1, 48.2, 16.37, 100, 5, u"Home");
    };
    setAll();
    save();
    setAll();
    EXPECT_FALSE(context().hasChanges());
    task().setRegionAlert(1, 48.2, 16.37, 101, 5, std::nullopt);
    EXPECT_THAT(task().changedKeys(), ElementsAre("regionDescription", "regionRadius"));
    EXPECT_EQ(task().lastModified(), 0) << "the caller marks the change";
}

}  // namespace
}  // namespace corvane
