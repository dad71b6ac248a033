// The tasks of a list: queries, the cache of the order, clearing.
#include "QueryFixture.h"

namespace corvane {
namespace {

class ListTaskTest : public QueryTest {};

TEST_F(ListTaskTest, QueriesTellTasksApart) {
    plant(list(), "A(B+ C) D+#(E) F*# G*");
    EXPECT_EQ(names(list().orderedRootTasks()), "A D");
    EXPECT_EQ(names(list().orderedAllTasks()), "A B C D E");
    EXPECT_EQ(names(list().completedTasks()), "B D");
    EXPECT_EQ(list().removedTasks().size(), 2u);
    const ParentTasks parents = list().parentTasks();
    EXPECT_EQ(parents.size(), 2u);
    EXPECT_EQ(parents.at(named("A").objectID()), &named("A"));
    named("C").setId(u"c");
    named("G").setId(u"g");
    EXPECT_EQ(list().findTaskId(u"g"), &named("G")) << "removed tasks are found";
    EXPECT_EQ(list().findTaskId(u"x"), nullptr);
    EXPECT_EQ(list().findTaskId(u""), nullptr);
    EXPECT_EQ(list().findTaskId(std::nullopt), nullptr);
}

TEST_F(ListTaskTest, TheCacheOfTheOrderIsAsStaleAsItsFlagSays) {
    plant(list(), "A B");
    list().orderedAllTasks();
    list().setUseCachedOrderedAllTasks(true);
    named("B").setRemoved(true);
    EXPECT_EQ(names(list().orderedAllTasks()), "A B") << "the last fetch without the flag counts";
    list().resetOrderedAllTasks();
    EXPECT_EQ(names(list().orderedAllTasks()), "A");
    named("B").setRemoved(false);
    list().setUseCachedOrderedAllTasks(false);
    EXPECT_EQ(names(list().orderedAllTasks()), "A B");
}

TEST_F(ListTaskTest, ClearingLiftsChildren) {
    constexpr std::tuple<const char*, const char*, std::size_t> kRows[] = {
        {"A+(B C+ D) E",     "B D E",     0},
        {"A+#(B)",           "B",         1},
        {"A(B+(C(D)) E+) F", "A(C(D)) F", 0},
        {"A+(B*#)",          "",          1},
    };
    for (const auto& [before, after, tombstones] : kRows) {
        SCOPED_TRACE(before);
        GList& cleared = listWith(before);
        cleared.deleteCompletedTasks();
        EXPECT_EQ(liveTreeText(cleared), after);
        EXPECT_EQ(cleared.removedTasks().size(), tombstones);
        std::int16_t position = 0;
        for (const GTask* task : cleared.orderedAllTasks()) EXPECT_EQ(task->displayOrder(), position++);
    }
}

}  // namespace
}  // namespace corvane
