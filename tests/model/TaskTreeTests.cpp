// The tree of tasks: neighbours, counts, renumbering, folding.
#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "model/TaskTree.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class TaskTreeTest : public ModelTest {
  protected:
    std::vector<std::string> names(const std::vector<GTask*>& tasks) {
        std::vector<std::string> result;
        for (const GTask* task : tasks) result.push_back(nameOf(task));
        return result;
    }
};

TEST_F(TaskTreeTest, AnswersAboutOneTask) {
    plant(list(), "A(B(C) D+(E) F*(G)) H*(I) J+ K");
    struct Row {
        const char* name;
        std::uint32_t depth, count;
        bool hasSubtasks;
        const char *previous, *previousOpen, *next;
    };
    constexpr Row kRows[] = {
        {"A", 0, 4, true,  "-", "-", "J"},
        {"B", 1, 1, true,  "-", "-", "D"},
        {"D", 1, 1, true,  "B", "B", "-"},
        {"F", 1, 1, true,  "-", "-", "-"}, // removed: not among the list's tasks
        {"K", 0, 0, false, "J", "A", "-"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const GTask& task = named(row.name);
        EXPECT_EQ(task.depth(), row.depth);
        EXPECT_EQ(task.countTotalSubTasks(), row.count);
        EXPECT_EQ(task.hasSubtasks(), row.hasSubtasks);
        EXPECT_EQ(nameOf(task.previousTask()), row.previous);
        EXPECT_EQ(nameOf(task.previousUncompletedTask()), row.previousOpen);
        EXPECT_EQ(nameOf(task.nextTask()), row.next);
    }
}

// Another program may have left a row without a value.
TEST_F(TaskTreeTest, WalksOverTheSubTasksThatTheFetchBrings) {
    plant(list(), "A(B(C) D E)");
    named("B").setValueForKey("removed", Value());
    named("E").setValueForKey("displayOrder", Value());
    EXPECT_THAT(names(named("A").orderedSubTasks(kCompletedToo)), ElementsAre("E", "D"));
    EXPECT_THAT(names(tasksOf(liveTree(named("A")))), ElementsAre("A", "E", "D"));
    GTask& unsaid = named("B");
    named("A").deleteTaskAndSubTasks(kPurge);
    EXPECT_FALSE(unsaid.isDeleted());
    EXPECT_EQ(unsaid.parentTask(), nullptr);
    EXPECT_EQ(unsaid.countTotalSubTasks(), 1u);
}

TEST_F(TaskTreeTest, OrderedSubTasksSeeUnsavedChanges) {
    plant(list(), "A(B@3 C+@1 D*@0 E@2)");
    EXPECT_THAT(names(named("A").orderedSubTasks(kCompletedToo)), ElementsAre("C", "E", "B"));
    EXPECT_THAT(names(named("A").orderedSubTasks(kUncompletedOnly)), ElementsAre("E", "B"));
    save();
    named("B").setDisplayOrder(0);
    named("E").setRemoved(true);
    EXPECT_THAT(names(named("A").orderedSubTasks(kCompletedToo)), ElementsAre("B", "C"));
}

TEST_F(TaskTreeTest, ATaskWithoutContextStopsTheProgram) {
    plant(list(), "A");
    save();
    GTask& gone = named("A");
    context().deleteObject(gone);
    save();
    EXPECT_DEATH(gone.orderedSubTasks(kCompletedToo), "moc != nil");
}

TEST_F(TaskTreeTest, RenumbersInTreeOrder) {
    struct Row {
        const char* before;
        bool changed;
        const char* after;
    };
    constexpr Row kRows[] = {
        {"A(B C(D)) E",        false, "A(B C(D)) E"   },
        {"A(B@9(C@1) D@3)",    true,  "A(D B(C))"     },
        {"A@-3 B@-9(C@-9)",    true,  "B(C) A"        },
        {"A@4 B@4 C@4",        true,  "A B C"         }, // ties in store order
        {"A(B*(C@8) D@5) E@1", true,  "A(D B*(C@8)) E"},
        {"",                   false, ""              },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.before);
        GUser& owner = makeAccount(context());
        GList& list = makeList(owner, u"Repaired");
        plant(list, row.before);
        EXPECT_EQ(owner.fixAllDisplayOrders(), row.changed);
        EXPECT_EQ(treeText(list), row.after);
        EXPECT_FALSE(owner.fixAllDisplayOrders());
    }
}

TEST_F(TaskTreeTest, RenumberingCountsOnWithAndWithoutTheMap) {
    plant(list(), "A(B) C");
    std::int32_t next = 5;
    const ParentTasks none;
    EXPECT_TRUE(named("A").fixDisplayOrder(next, &none));
    EXPECT_EQ(next, 6) << "a task that the map does not know is taken as childless";
    EXPECT_TRUE(named("A").fixDisplayOrder(next, nullptr));
    EXPECT_EQ(next, 8);
    EXPECT_EQ(treeText(list()), "C@2 A@6(B@7)");
    next = 65'538;
    EXPECT_TRUE(named("C").fixDisplayOrder(next, nullptr)) << "a change, though 16 bits of it stay the same";
    EXPECT_EQ(named("C").displayOrder(), 2);
    next = std::numeric_limits<std::int32_t>::max();
    named("C").fixDisplayOrder(next, nullptr);
    EXPECT_EQ(next, std::numeric_limits<std::int32_t>::min());
}

TEST_F(TaskTreeTest, FoldingTellsChildrenAroundTheirParentsChange) {
    plant(list(), "A(B(C) D*)");
    std::string told;
    for (GTask* task : list().tasks()) {
        task->addObserver([&told](ManagedObject& object, std::string_view key, bool isPrior) {
            if (key == "collapsed" && isPrior) return;
            if (!told.empty()) told += ' ';
            told += nameOf(&static_cast<GTask&>(object)) + (key == "collapsed" ? "=" : isPrior ? "<" : ">");
        });
    }
    save();
    named("A").recursiveSetCollapseTo(true);
    EXPECT_EQ(told, "C= C< B= C> B< D= D< A= B> D>");
    EXPECT_TRUE(named("D").collapsed());
    EXPECT_EQ(treeText(list()), "A(B(C) D*)");
}

// Three tasks in a circle, one beside it and one below it.
TEST_F(TaskTreeTest, CirclesOfParentsEndEveryWalk) {
    plant(list(), "A(B(C(D))) E");
    named("A").setParentTask(&named("C"));
    GTask& self = task(listWith("S"), "S");
    self.setParentTask(&self);
    for (const char* name : {"A", "B", "C", "D"}) {
        SCOPED_TRACE(name);
        GTask& task = named(name);
        EXPECT_EQ(task.depth(), 0u);
        EXPECT_TRUE(task.hasParent(&named("B")));
        EXPECT_FALSE(task.hasParent(&named("E")));
        EXPECT_TRUE(task.hasParent(nullptr));
        EXPECT_EQ(task.countTotalSubTasks(), name[0] == 'D' ? 0u : 3u);
        task.recursiveSetCollapseTo(true);
        task.fixCompletedSubtaskingSanity();
        std::int32_t next = 0;
        task.fixDisplayOrder(next, nullptr);
        EXPECT_EQ(next, name[0] == 'D' ? 1 : 4);
    }
    EXPECT_EQ(self.countTotalSubTasks(), 0u);
    self.recursiveSetCollapseTo(true);
    account().fixAllDisplayOrders();
    named("B").cloneToList(list(), &named("C"), nullptr);
    named("B").moveToList(list(), nullptr, &named("E"));
    named("A").deleteTaskAndSubTasks(kKeepTombstone);
    self.deleteTaskAndSubTasks(kKeepTombstone);
    EXPECT_EQ(context().save(), std::nullopt);
}

TEST_F(TaskTreeTest, TenThousandLevelsAreNoDeeperThanTwo) {
    constexpr int kLevels = 10'000;
    GTask* parent = nullptr;
    for (int i = 0; i < kLevels; ++i) {
        auto& task = context().insert<GTask>();
        task.setList(&list());
        task.setParentTask(parent);
        task.setDisplayOrder(static_cast<std::int16_t>(i));
        parent = &task;
    }
    GTask& root = *list().orderedRootTasks().front();
    EXPECT_EQ(parent->depth(), kLevels - 1u);
    EXPECT_EQ(root.countTotalSubTasks(), kLevels - 1u);
    EXPECT_FALSE(account().fixAllDisplayOrders());
    root.recursiveSetCollapseTo(true);
    root.setCompleted(true);
    root.fixCompletedSubtaskingSanity();
    EXPECT_TRUE(parent->completed());
    GTask& copy = root.cloneToList(makeList(account(), u"Other"), nullptr, nullptr);
    EXPECT_EQ(copy.countTotalSubTasks(), kLevels - 1u);
    root.deleteTaskAndSubTasks(kKeepTombstone);
    EXPECT_EQ(list().tasks().size(), 0u);
}

}  // namespace
}  // namespace corvane
