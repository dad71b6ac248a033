#include "apps/host/TaskEditing.h"

#include <gtest/gtest.h>

#include <random>

#include "dates/RepeatArithmetic.h"
#include "model/GSData.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

constexpr std::int32_t kAtTheEnd = -1;

class TaskEditingTest : public testing::Test {
  protected:
    TaskEditingTest() {
        data_.launch();
        GUser& account = GUser::insertNewAccountToContext(context(), kAtTheEnd);
        list_ = &GList::insertNewListToAccount(account, kAtTheEnd);
    }

    ManagedObjectContext& context() { return data_.viewContext(); }
    GTask& add(std::u16string_view name, GTask* parent = nullptr, GTask* previous = nullptr) {
        GTask& task = GTask::insertNewTaskToList(*list_, parent, previous);
        task.setName(name);
        return task;
    }
    void save() { ASSERT_EQ(context().save(), std::nullopt); }
    GList& list() { return *list_; }

    const TestEnvironment environment_;

  private:
    GSData data_;
    GList* list_ = nullptr;
};

TEST_F(TaskEditingTest, CompletesATreeWithDates) {
    GTask& parent = add(u"Parent");
    GTask& open = add(u"Open", &parent);
    GTask& done = add(u"Done", &parent, &open);
    done.setCompleted(true);
    done.setCompletedDate(at("2024-01-01"));
    save();
    EXPECT_EQ(completeTask(parent).otherTasks, 1u);
    EXPECT_EQ(parent.completedDate(), now());
    EXPECT_EQ(open.completedDate(), now());
    EXPECT_EQ(done.completedDate(), at("2024-01-01"));
    EXPECT_FALSE(completeTask(parent).isChanged);

    reopenTask(open);
    EXPECT_FALSE(parent.completed());
    EXPECT_EQ(parent.completedDate(), std::nullopt);
    EXPECT_TRUE(done.completed());
}

TEST_F(TaskEditingTest, MovesARepeatingTaskOnAndItsSubtasksBeginAnew) {
    GTask& parent = add(u"Clean");
    GTask& child = add(u"Kitchen", &parent);
    parent.setDueDate(at("2024-03-01 09:00"), kAtTimeOfDay, kRepeatWeekly, 1);
    parent.setDateAlert(at("2024-03-01 08:45"));
    save();
    const CompletionResult result = completeTask(parent);
    EXPECT_EQ(result.nextDueDate, at("2024-03-08 09:00"));
    EXPECT_FALSE(parent.completed());
    EXPECT_EQ(parent.alertDate(), at("2024-03-08 08:45"));
    EXPECT_FALSE(child.completed());
    EXPECT_EQ(child.completedDate(), std::nullopt);
}

TEST_F(TaskEditingTest, MovesToTomorrowWithTimeAndAlert) {
    GTask& task = add(u"Call");
    task.setDueDate(at("2024-02-20 15:30"), kAtTimeOfDay, kNoRepeat, 1);
    task.setDateAlert(at("2024-02-20 15:00"));
    save();
    const CompletionUndo undo = moveToTomorrow(task);
    EXPECT_EQ(task.dueDate(), at("2024-03-06 15:30"));
    EXPECT_EQ(task.alertDate(), at("2024-03-06 15:00"));
    EXPECT_TRUE(undo.restore(context()));
    EXPECT_EQ(task.dueDate(), at("2024-02-20 15:30"));
    EXPECT_EQ(task.alertDate(), at("2024-02-20 15:00"));
}

TEST_F(TaskEditingTest, UndoLeavesWhatWasChangedSince) {
    GTask& task = add(u"Task");
    task.setDueDate(at("2024-03-01"), kAllDay, kRepeatDaily, 1);
    save();
    const CompletionResult result = completeTask(task);
    task.setDueDate(at("2024-05-01"));
    EXPECT_FALSE(result.undo.restore(context()));
    EXPECT_EQ(task.dueDate(), at("2024-05-01"));
    EXPECT_FALSE(task.completed());
}

TEST_F(TaskEditingTest, ARuleGivesADueDateOnTheRule) {
    GTask& task = add(u"Report");
    setRepeat(task, {kRepeatWeekly, 1, {6}});
    EXPECT_EQ(task.dueDate(), at("2024-03-08"));
    EXPECT_FALSE(task.hasDueTime());
    setRepeat(task, {kRepeatMonthly, 1, {}, kLastOrdinal, kWorkingDay});
    EXPECT_EQ(task.dueDate(), at("2024-03-29"));
    setRepeat(task, {});
    EXPECT_EQ(task.dueDate(), at("2024-03-29"));
    EXPECT_EQ(task.alertRepeatData(), std::nullopt);
}

/// Everything stored of the list's tasks, as one text.
std::string everything(const GList& list) {
    std::string text;
    for (const GTask* task : list.tasks()) {
        text += utf8FromText(task->desc()) + " " + std::to_string(task->lastModified()) + " " +
                (task->completedDate() ? civilText(*task->completedDate()) : "-") + " " +
                (task->alertDate() ? civilText(*task->alertDate()) : "-") +
                std::to_string(task->alertRepeat()) + utf8FromText(task->alertRepeatData().value_or(u"-")) +
                std::to_string(task->alertRepeatInterval()) + (task->hasDueTime() ? "t" : "d") + "\n";
    }
    return text;
}

TEST_F(TaskEditingTest, UndoIsExactOverRandomTrees) {
    std::mt19937 random(7);
    const auto upTo = [&](unsigned n) { return random() % n; };
    std::vector<GTask*> tasks;
    for (int i = 0; i < 40; ++i) {
        GTask* parent =
            tasks.empty() || upTo(4) == 0 ? nullptr : tasks[upTo(static_cast<unsigned>(tasks.size()))];
        GTask& task = add(u"T", parent);
        tasks.push_back(&task);
        task.setCompleted(upTo(2) == 0);
        task.setLastModified(upTo(2) == 0 ? 1'600'000'000'000 : 64'092'211'200'000);
        if (upTo(2) == 0) task.setDueDate(at("2024-03-01 10:00"), upTo(2) == 0, upTo(2) == 0 ? 16 : 256, 0);
        if (upTo(2) == 0) task.setDateAlert(at("2024-02-29 10:00"));
    }
    save();
    for (int i = 0; i < 200; ++i) {
        GTask& task = *tasks[upTo(static_cast<unsigned>(tasks.size()))];
        const std::string before = everything(list());
        const CompletionResult result = task.completed() ? reopenTask(task) : completeTask(task);
        if (upTo(2) == 0) save();
        ASSERT_NE(everything(list()), before);
        ASSERT_TRUE(result.undo.restore(context()));
        ASSERT_EQ(everything(list()), before);
        if (upTo(2) == 0) (task.completed() ? reopenTask : completeTask)(task);  // on to another state
        save();
    }
}

}  // namespace
}  // namespace corvane
