#include "apps/host/AlertSchedule.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "WidgetFixture.h"
#include "apps/host/TaskEditing.h"
#include "platform/foundation/Text.h"
#include "support/FileBytes.h"
#include "support/ProcessVariable.h"

namespace corvane {
namespace {

std::string titlesOf(const std::vector<GTask*>& tasks) {
    std::string titles;
    for (const GTask* task : tasks) titles += (titles.empty() ? "" : " ") + utf8FromText(*task->name());
    return titles;
}

class AlertScheduleTest : public testing::Test {
  protected:
    GTask& addAlert(std::u16string_view name, const char* alert) {
        GTask& task = widget_.addTask(name, "2024-03-05 18:00");
        task.setHasDueTime(true);
        task.setDateAlert(at(alert));
        return task;
    }
    /// The titles of the alerts that a schedule gives at a moment.
    std::string given(AlertSchedule& schedule, const char* now) {
        return titlesOf(schedule.take(widget_.context(), at(now)));
    }
    std::string next(const char* after) {
        const std::optional<Date> date = nextAlert(widget_.context(), at(after));
        return date ? civilText(*date) : "none";
    }
    std::filesystem::path stateFile() const { return state_.path() / "corvane" / "alerts"; }

    WidgetFixture widget_;
    const TemporaryDirectory state_;
    const ProcessVariable stateHome_{"XDG_STATE_HOME", state_.path().c_str()};
};

TEST_F(AlertScheduleTest, ChoosesLiveOpenTasksWithAnAlertThatIsOn) {
    GList& removed = widget_.addList(u"Gone", widget_.account);
    removed.setRemoved(true);
    addAlert(u"third", "2024-03-05 14:00");
    addAlert(u"first", "2024-03-05 13:00");
    addAlert(u"second", "2024-03-05 13:00:00.500");
    addAlert(u"before", "2024-03-05 12:00");
    addAlert(u"after", "2024-03-05 14:00:00.001");
    addAlert(u"off", "2024-03-05 13:00").setAlertEnabled(false);
    addAlert(u"done", "2024-03-05 13:00").setCompleted(true);
    addAlert(u"removed", "2024-03-05 13:00").setRemoved(true);
    addAlert(u"inRemovedList", "2024-03-05 13:00").setList(&removed);
    addAlert(u"notDue", "2024-03-05 13:00").setHasDueDate(false);
    addAlert(u"", "2024-03-05 13:00");
    for (const char* state : {"unsaved", "saved"}) {
        SCOPED_TRACE(state);
        EXPECT_EQ(titlesOf(tasksWithAlertsBetween(widget_.context(), at("2024-03-05 12:00"),
                                                  at("2024-03-05 14:00"))),
                  "first second third");
        EXPECT_EQ(next("2024-03-05 12:00"), "2024-03-05 13:00");
        EXPECT_EQ(next("2024-03-05 13:00:00.500"), "2024-03-05 14:00");
        EXPECT_EQ(next("2024-03-06 12:00"), "none");
        widget_.save();
    }
}

TEST_F(AlertScheduleTest, GivesEachAlertOnceAlsoAfterARestart) {
    addAlert(u"old", "2024-03-05 11:59");
    addAlert(u"milk", "2024-03-05 13:00");
    {
        AlertSchedule schedule("A", at("2024-03-05 12:00"));
        EXPECT_EQ(given(schedule, "2024-03-05 12:00"), "") << "set before the first run";
        EXPECT_EQ(given(schedule, "2024-03-05 12:59:59"), "");
        EXPECT_EQ(given(schedule, "2024-03-05 13:00"), "milk");
        EXPECT_EQ(given(schedule, "2024-03-05 13:00"), "");
    }
    AlertSchedule again("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(again, "2024-03-05 13:00:01"), "");
    addAlert(u"bread", "2024-03-05 13:05");
    AlertSchedule other("B", at("2024-03-05 13:06"));
    EXPECT_EQ(given(other, "2024-03-05 13:06"), "") << "a store that nobody has looked at";
    EXPECT_EQ(given(again, "2024-03-05 13:06"), "bread");
}

TEST_F(AlertScheduleTest, GivesLateWhatCameDueWhileNothingRan) {
    addAlert(u"twoDaysAgo", "2024-03-05 14:00");
    addAlert(u"yesterday", "2024-03-06 18:00");
    {
        AlertSchedule schedule("A", at("2024-03-05 12:00"));
        EXPECT_EQ(given(schedule, "2024-03-05 12:00"), "");
    }
    AlertSchedule schedule("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(schedule, "2024-03-07 12:00"), "twoDaysAgo yesterday");
}

TEST_F(AlertScheduleTest, LooksBackForChangesThatArriveLateButNotFar) {
    AlertSchedule schedule("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(schedule, "2024-03-05 12:00"), "");
    EXPECT_EQ(given(schedule, "2024-03-05 13:00"), "");
    addAlert(u"longPast", "2024-03-05 12:45");
    addAlert(u"justNow", "2024-03-05 12:55");
    EXPECT_EQ(given(schedule, "2024-03-05 13:01"), "justNow");
    AlertSchedule again("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(again, "2024-03-05 13:30"), "");
}

TEST_F(AlertScheduleTest, RepeatsNothingWhenTheClockIsSetBack) {
    addAlert(u"milk", "2024-03-05 13:00");
    AlertSchedule schedule("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(schedule, "2024-03-05 12:00"), "");
    EXPECT_EQ(given(schedule, "2024-03-05 13:30"), "milk");
    EXPECT_EQ(given(schedule, "2024-03-05 12:30"), "");
    addAlert(u"bread", "2024-03-05 13:10");
    EXPECT_EQ(given(schedule, "2024-03-05 13:15"), "bread");
}

TEST_F(AlertScheduleTest, GivesTheAlertOfTheNextOccurrence) {
    GTask& task = addAlert(u"water", "2024-03-05 13:00");
    task.setDueDate(task.dueDate(), kAtTimeOfDay, kRepeatDaily, 1);
    AlertSchedule schedule("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(schedule, "2024-03-05 12:00"), "");
    EXPECT_EQ(given(schedule, "2024-03-05 13:00"), "water");
    completeTask(task);
    EXPECT_EQ(next("2024-03-05 13:00"), "2024-03-06 13:00");
    EXPECT_EQ(given(schedule, "2024-03-06 13:00"), "water");
}

TEST_F(AlertScheduleTest, KeepsItsFilePrivateAndShortAndSurvivesDamage) {
    AlertSchedule first("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(first, "2024-03-05 12:00"), "");
    for (int day = 0; day < 5; ++day) {
        const Date moment = at("2024-03-05 13:00") + TimeInterval(day * 86'400.0);
        for (int i = 0; i < 50; ++i) addAlert(u"x", civilText(moment).c_str());
        EXPECT_EQ(first.take(widget_.context(), moment).size(), 50u);
    }
    struct stat status = {};
    ASSERT_EQ(stat(stateFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_LT(status.st_size, 10'000);

    for (const char* const damage : {"", "bplist00", "nonsense", "<plist><array/></plist>"}) {
        SCOPED_TRACE(damage);
        writeFileBytes(stateFile(), damage);
        AlertSchedule schedule("A", at("2024-03-09 13:05"));
        EXPECT_EQ(given(schedule, "2024-03-09 13:05"), "") << "as a first run";
        AlertSchedule again("A", at("2024-03-05 12:00"));
        GTask& task = addAlert(u"y", "2024-03-09 13:06");
        EXPECT_EQ(given(again, "2024-03-09 13:06"), "y") << "the file is whole again";
        task.setCompleted(true);
    }
}

TEST_F(AlertScheduleTest, AsksOneStatementHoweverManyTasks) {
    for (int i = 0; i < 3'000; ++i) addAlert(u"x", "2024-03-05 20:00");
    widget_.save();
    AlertSchedule schedule("A", at("2024-03-05 12:00"));
    EXPECT_EQ(given(schedule, "2024-03-05 12:00"), "");
    const std::size_t before = widget_.context().statementCount();
    EXPECT_EQ(given(schedule, "2024-03-05 13:00"), "");
    EXPECT_EQ(widget_.context().statementCount(), before + 1);
    EXPECT_EQ(next("2024-03-05 13:00"), "2024-03-05 20:00");
    EXPECT_EQ(widget_.context().statementCount(), before + 2);
}

}  // namespace
}  // namespace corvane
