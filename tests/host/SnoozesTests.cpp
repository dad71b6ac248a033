#include "apps/host/Snoozes.h"

#include <gtest/gtest.h>

#include <functional>

#include "WidgetFixture.h"
#include "apps/host/TaskEditing.h"
#include "platform/foundation/Text.h"
#include "support/FileBytes.h"
#include "support/ProcessVariable.h"

namespace corvane {
namespace {

class SnoozesTest : public testing::Test {
  protected:
    GTask& addTask(std::u16string_view name) {
        GTask& task = widget_.addTask(name, "2024-03-05 18:00");
        task.setDateAlert(at("2024-03-05 12:00"));
        widget_.save();
        return task;
    }
    std::string idOf(const GTask& task) { return widget_.context().uriRepresentation(task); }
    std::string taken(Snoozes& snoozes, const char* now) {
        std::string titles;
        for (const DueReminder& due : snoozes.take(widget_.context(), at(now))) {
            titles += (titles.empty() ? "" : " ") + utf8FromText(*due.task->name());
        }
        return titles;
    }

    WidgetFixture widget_;
    const TemporaryDirectory state_;
    const ProcessVariable stateHome_{"XDG_STATE_HOME", state_.path().c_str()};
};

TEST_F(SnoozesTest, RemindOnceAlsoAfterARestartHoweverLate) {
    GTask& milk = addTask(u"milk");
    GTask& bread = addTask(u"bread");
    {
        Snoozes snoozes("A");
        EXPECT_EQ(snoozes.next(), std::nullopt);
        EXPECT_TRUE(snoozes.add(milk, at("2024-03-05 12:10")));
        EXPECT_TRUE(snoozes.add(bread, at("2024-03-05 13:00")));
        EXPECT_TRUE(snoozes.add(milk, at("2024-03-05 13:30"))) << "a later one replaces it";
        EXPECT_EQ(taken(snoozes, "2024-03-05 12:59"), "");
        EXPECT_EQ(civilText(snoozes.next().value()), "2024-03-05 13:00");
    }
    Snoozes again("A");
    EXPECT_EQ(again.until(idOf(milk)), at("2024-03-05 13:30"));
    EXPECT_EQ(taken(again, "2024-03-09 12:00"), "bread milk");
    EXPECT_EQ(again.until(idOf(milk)), std::nullopt);
    EXPECT_EQ(taken(again, "2024-03-09 12:00"), "");
    Snoozes afterwards("A");
    EXPECT_EQ(afterwards.next(), std::nullopt);
    EXPECT_FALSE(widget_.context().hasChanges()) << "no task was touched";
}

TEST_F(SnoozesTest, LoseTheirSenseWithTheTaskOrItsDates) {
    const auto expect = [this](const char* what, bool stays, const std::function<void(GTask&)>& change) {
        SCOPED_TRACE(what);
        GTask& task = addTask(u"milk");
        const std::string id = idOf(task);
        Snoozes snoozes("A");
        EXPECT_TRUE(snoozes.add(task, at("2024-03-05 13:00")));
        change(task);
        widget_.save();
        snoozes.settle(widget_.context());
        EXPECT_EQ(snoozes.until(id).has_value(), stays);
        EXPECT_EQ(Snoozes("A").until(id).has_value(), stays) << "on disk";
        EXPECT_EQ(taken(snoozes, "2024-03-05 13:00"), stays ? "milk" : "");
    };
    expect("nothing", true, [](GTask&) {});
    expect("another title", true, [](GTask& task) { task.setNotes(u"2 l"); });
    expect("moved to tomorrow", false, [](GTask& task) { moveToTomorrow(task); });
    expect("another alert", false, [](GTask& task) { setAlert(task, at("2024-03-05 17:00")); });
    expect("no due date", false, [](GTask& task) { setDue(task, std::nullopt); });
    expect("done", false, [](GTask& task) { completeTask(task); });
    expect("deleted", false, [](GTask& task) { task.deleteTask(kPurge); });
    expect("its list removed", false, [this](GTask& task) {
        GList& list = widget_.addList(u"Gone", widget_.account);
        list.setRemoved(true);
        task.setList(&list);
    });
    expect("moved on by its rule", false, [](GTask& task) {
        task.setDueDate(task.dueDate(), kAllDay, kRepeatDaily, 1);
        completeTask(task);
    });
}

TEST_F(SnoozesTest, AreTakenBackAndSurviveADamagedFile) {
    GTask& milk = addTask(u"milk");
    Snoozes snoozes("A");
    EXPECT_TRUE(snoozes.add(milk, at("2024-03-05 13:00")));
    snoozes.cancel(idOf(milk));
    EXPECT_EQ(Snoozes("A").next(), std::nullopt);
    writeFileBytes(state_.path() / "corvane" / "snoozes", "bplist00nonsense");
    Snoozes damaged("A");
    EXPECT_EQ(damaged.next(), std::nullopt);
    EXPECT_TRUE(damaged.add(milk, at("2024-03-05 13:00")));
    EXPECT_EQ(civilText(Snoozes("A").next().value()), "2024-03-05 13:00");
}

TEST_F(SnoozesTest, AreKeptInMemoryWhereNothingCanBeWritten) {
    writeFileBytes(state_.path() / "corvane", "a file where the folder belongs");
    GTask& milk = addTask(u"milk");
    Snoozes snoozes("A");
    EXPECT_FALSE(snoozes.add(milk, at("2024-03-05 13:00")));
    EXPECT_EQ(taken(snoozes, "2024-03-05 13:00"), "milk");
}

}  // namespace
}  // namespace corvane
