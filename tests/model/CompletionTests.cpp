// Completed tasks: repeat rules move on, parents and children agree.
#include <gtest/gtest.h>

#include "ModelFixture.h"

namespace corvane {
namespace {

class CompletionTest : public ModelTest {
  protected:
    /// A task due on a Tuesday with a rule.
    GTask& repeating(std::int32_t kind, std::int32_t interval, const char16_t* data) {
        plant(list(), "Repeating+");
        GTask& task = *list().orderedAllTasks().back();
        task.setDueDate(at("2024-03-05 09:00"), kAtTimeOfDay, kind, interval);
        task.setAlertRepeatData(data ? std::optional<std::u16string_view>(data) : std::nullopt);
        task.setDateAlert(at("2024-03-05 08:30"));
        return task;
    }

    static std::string dueText(const GTask& task) {
        const std::string due = task.dueDate() ? civilText(*task.dueDate()) : "none";
        return due + (task.alertDate() ? ", alert " + civilText(*task.alertDate()) : "");
    }

    bool isMarked(std::string_view name) { return named(name).lastModified() != 0; }
};

TEST_F(CompletionTest, RepeatingTasksMoveOnByOneStep) {
    struct Row {
        const char* what;
        std::int32_t kind, interval;
        const char16_t* data;
        const char* due;
    };
    const Row kRows[] = {
        {"daily",             16,   2, nullptr, "2024-03-07 09:00, alert 2024-03-07 08:30"},
        {"weekly, next week", 8192, 2, u"2,3",  "2024-03-18 09:00, alert 2024-03-18 08:30"},
        {"second Friday",     8,    1, u"2,6",  "2024-03-08 09:00, alert 2024-03-08 08:30"},
        {"unknown kind",      32,   1, nullptr, "none"                                    },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        GTask& task = repeating(row.kind, row.interval, row.data);
        task.setCompletedDate(at("2024-03-09 20:00"));
        task.progressRepeat();
        EXPECT_EQ(dueText(task), row.due);
        EXPECT_FALSE(task.completed());
        EXPECT_EQ(task.lastModified(), 64'092'211'200'000);
        EXPECT_EQ(task.completedDate(), at("2024-03-09 20:00"));
        EXPECT_EQ(task.alertEnabled(), task.dueDate().has_value());
    }
}

TEST_F(CompletionTest, OtherTasksStayAsTheyAre) {
    GTask& single = repeating(0, 1, nullptr);
    GTask& open = repeating(16, 1, nullptr);
    open.setCompleted(false);
    GTask& undated = repeating(16, 1, nullptr);
    undated.setDueDate(std::nullopt, kAtTimeOfDay, kRepeatDaily, 1);
    save();
    for (GTask* task : {&single, &open, &undated}) task->progressRepeat();
    EXPECT_FALSE(context().hasChanges());
}

TEST_F(CompletionTest, ParentsAndChildrenAgree) {
    struct Row {
        const char* what;
        const char* before;
        const char* touched;
        const char* after;
        const char* marked;
    };
    constexpr Row kRows[] = {
        {"completing spreads down, not into the removed", "A+(B C+(D) E*(F))", "A", "A+(B+ C+(D) E*(F@4))",
         "B"                                                                                                     },
        {"completing spreads through the changed",        "A+(B(C(D)))",       "A", "A+(B+(C+(D+)))",       "BCD"},
        {"reopening spreads up",                          "A+(B+(C D+))",      "C", "A(B(C D+))",           "AB" },
        {"all done: all reopened",                        "A(B+ C+(D+) E*+)",  "A", "A(B C(D) E*+)",        "BCD"},
        {"one open: the others stay",                     "A(B+ C D+(E+))",    "A", "A(B+ C D+(E+))",       ""   },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        GList& list = listWith(row.before);
        task(list, row.touched).fixCompletedSubtaskingSanity();
        EXPECT_EQ(treeText(list), row.after);
        std::string marked;
        for (const GTask* each : list.tasks()) marked += each->lastModified() != 0 ? nameOf(each) : "";
        EXPECT_EQ(marked, row.marked);
    }
}

TEST_F(CompletionTest, MisalignedDatesMoveOntoTheirRule) {
    struct Row {
        const char* what;
        std::int32_t kind;
        const char16_t* data;
        const char* due;
    };
    const Row kRows[] = {
        {"a later day of the week", 256,  u"2,5", "2024-03-07 09:00, alert 2024-03-07 08:30"},
        {"on the rule",             8192, u"3,5", "2024-03-05 09:00, alert 2024-03-05 08:30"},
        {"second Friday",           8,    u"2,6", "2024-03-08 09:00, alert 2024-03-08 08:30"},
        {"other kinds",             16,   u"2,5", "2024-03-05 09:00, alert 2024-03-05 08:30"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        GTask& task = repeating(row.kind, 1, row.data);
        const std::string before = dueText(task);
        task.fixSanity();
        EXPECT_EQ(dueText(task), row.due);
        EXPECT_EQ(task.lastModified() != 0, before != row.due) << "marked when it moved";
        EXPECT_TRUE(task.completed());
        EXPECT_EQ(task.alertRepeatData(),
                  row.data ? std::optional<std::u16string_view>(row.data) : std::nullopt);
    }
}

}  // namespace
}  // namespace corvane
