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
};

TEST_F(CompletionTest, RepeatingTasksMoveOnByOneStepAndMisalignedOnesOntoTheirRule) {
    struct Row {
        const char* what;
        std::int32_t kind, interval;
        const char16_t* data;
        const char* next;     ///< the day after a completion; "none" for no date
        const char* aligned;  ///< the day on the rule
    };
    constexpr const char* kTuesday = "2024-03-05";
    const Row rows[] = {
        {"daily",                16,   2, nullptr, "2024-03-07", kTuesday    },
        {"later in the week",    256,  2, u"2,5",  "2024-03-07", "2024-03-07"},
        {"on the rule",          8192, 2, u"2,3",  "2024-03-18", kTuesday    },
        {"second Friday, ahead", 8,    1, u"2,6",  "2024-03-08", "2024-03-08"},
        {"unknown kind",         32,   1, nullptr, "none",       kTuesday    },
    };
    const auto dueOn = [](const std::string& day) {
        return day == "none" ? day : day + " 09:00, alert " + day + " 08:30";
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        GTask& completed = repeating(row.kind, row.interval, row.data);
        completed.setCompletedDate(at("2024-03-09 20:00"));
        completed.progressRepeat();
        EXPECT_EQ(dueText(completed), dueOn(row.next));
        EXPECT_FALSE(completed.completed());
        EXPECT_EQ(completed.lastModified(), 64'092'211'200'000);
        EXPECT_EQ(completed.completedDate(), at("2024-03-09 20:00"));
        EXPECT_EQ(completed.alertEnabled(), completed.dueDate().has_value());

        GTask& misaligned = repeating(row.kind, row.interval, row.data);
        misaligned.fixSanity();
        EXPECT_EQ(dueText(misaligned), dueOn(row.aligned));
        EXPECT_EQ(misaligned.lastModified() != 0, row.aligned != kTuesday) << "marked when it moved";
        EXPECT_TRUE(misaligned.completed());
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

}  // namespace
}  // namespace corvane
