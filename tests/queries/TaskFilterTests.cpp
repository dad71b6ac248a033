// The standard filters: texts, binding, names, and what they select from file and memory.
#include <gmock/gmock.h>

#include <random>

#include "QueryFixture.h"
#include "model/CorvaneUserDefaults.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

constexpr std::u16string_view kBase =
    u"removed == NO && name != nil && name != '' && list.removed == NO && list.isIsolated == NO";
constexpr std::u16string_view kScope = u" && (list.user.accountType == 5000 || list.user == $USER)";

class TaskFilterTest : public QueryTest {
  protected:
    void showOverdueApart() { ASSERT_TRUE(corvaneUserDefaults().setObject("ShowOverdueTasksList", {true})); }
    static std::u16string filterText(std::int32_t filter, bool hide = false, bool roots = false) {
        return GSData::predicateStringForTasksWithFilter(filter, hide, roots);
    }
};

TEST_F(TaskFilterTest, TextsToTheCharacter) {
    const std::u16string base(kBase);
    const std::u16string scoped = base + std::u16string(kScope);
    EXPECT_EQ(filterText(0),
              base +
                  u" && list.user == $USER && hasDueDate == YES && ((hasDueTime == YES && dueDate < $NOW)"
                  u" || (hasDueTime == NO && dueDate < $TODAY))");
    EXPECT_EQ(filterText(1, true),
              scoped + u" && completed == NO && hasDueDate == YES && dueDate < $TOMORROW");
    EXPECT_EQ(filterText(2),
              scoped + u" && hasDueDate == YES && dueDate >= $TOMORROW && dueDate < $DAY_AFTER_TOMORROW");
    EXPECT_EQ(filterText(3), scoped + u" && hasDueDate == YES && dueDate < $NEXT_WEEK");
    EXPECT_EQ(filterText(4), scoped + u" && hasDueDate == NO");
    EXPECT_EQ(filterText(5), scoped);
    EXPECT_EQ(filterText(6, true), scoped + u" && completed == YES");
    EXPECT_EQ(filterText(7, true, true), filterText(5, true, true));
    EXPECT_EQ(filterText(8, true, true), base + u" && parentTask = nil && list == $LIST && completed == NO");
    EXPECT_EQ(filterText(-3), scoped);
    showOverdueApart();
    EXPECT_EQ(filterText(1), scoped + u" && hasDueDate == YES && dueDate >= $TODAY && dueDate < $TOMORROW");
    EXPECT_EQ(filterText(3), scoped + u" && hasDueDate == YES && dueDate >= $TODAY && dueDate < $NEXT_WEEK");
}

TEST_F(TaskFilterTest, NamesImagesAndRememberedOrders) {
    EXPECT_EQ(GSData::filterLocalizedName(3), u"Upcoming Week");
    EXPECT_EQ(GSData::filterLocalizedName(9), std::nullopt);
    EXPECT_EQ(GSData::filterImageName(4), "Filter-NoDate");
    EXPECT_EQ(GSData::filterImageName(0), "Filter-Overdue");
    EXPECT_EQ(GSData::filterImageName(-1), "Filter-Overdue");
    ASSERT_TRUE(corvaneUserDefaults().setObject("TodayOverdueTasksOrder", {std::int64_t{65538}}));
    EXPECT_EQ(GSData::tasksOrderForFilter(1), 2);
    EXPECT_EQ(GSData::tasksOrderForFilter(8), 0);
    EXPECT_EQ(GSData::tasksOrderForFilter(99), 0);
}

TEST_F(TaskFilterTest, AMissingAccountOrListMatchesAMissingOne) {
    GList& orphaned = listWith("A");
    orphaned.setUser(nullptr);
    plant(list(), "B");
    save();
    const auto found = [&](std::u16string_view text) {
        FetchRequest request;
        request.predicate = GSData::predicateFromString(text, nullptr, nullptr);
        return names(context().fetch<GTask>(request));
    };
    EXPECT_EQ(found(u"list.user == $USER"), "A");
    task(orphaned, "A").setList(nullptr);
    EXPECT_EQ(found(u"list == $LIST"), "A") << "unsaved";
    save();
    EXPECT_EQ(found(u"list == $LIST"), "A");
    EXPECT_EQ(found(u"list.user == $USER"), "A") << "no list has no account either";
}

// Random stores, each filter asked of the file, of memory, and of the file under unsaved changes.
TEST_F(TaskFilterTest, FileAndMemoryAgree) {
    std::mt19937 random(20240305);
    const auto chance = [&](unsigned percent) { return random() % 100 < percent; };
    GUser& unlisted = accountWithLists(kUnlistedAccountType, {u"U"});
    GList& other = listNamed(accountWithLists(7, {u"O"}), u"O");
    const std::vector<GList*> lists = {&list(), &listNamed(unlisted, u"U"), &other, nullptr};
    const std::optional<std::u16string_view> names[] = {u"n", u"n", u"n", u"n", u"", std::nullopt};
    std::vector<GTask*> tasks;
    const auto scramble = [&](GTask& task) {
        const auto hours = std::chrono::hours(static_cast<int>(random() % 480) - 240);
        task.setList(lists[random() % lists.size()]);
        task.setRemoved(chance(10));
        task.setCompleted(chance(30));
        task.setName(names[random() % std::size(names)]);
        task.setHasDueDate(chance(70));
        task.setHasDueTime(chance(50));
        task.setDueDate(chance(90) ? std::optional(now() + hours) : std::nullopt);
        task.setParentTask(tasks.empty() || chance(70) ? nullptr : tasks[random() % tasks.size()]);
    };
    for (int i = 0; i < 200; ++i) {
        tasks.push_back(&context().insert<GTask>());
        scramble(*tasks.back());
    }
    save();
    for (const char* state : {"saved", "unsaved"}) {
        for (std::int32_t filter = 0; filter <= 8; ++filter) {
            FetchRequest request;
            GUser* user = filter % 2 == 0 ? &account() : nullptr;
            const std::u16string text = filterText(filter, chance(50), chance(50));
            request.predicate = GSData::predicateFromString(text, user, &other);
            std::vector<GTask*> expected = tasks;
            std::erase_if(expected, [&](GTask* task) { return !request.predicate->evaluate(*task); });
            EXPECT_THAT(context().fetch<GTask>(request), testing::UnorderedElementsAreArray(expected))
                << "filter " << filter << ", " << state;
        }
        for (int i = 0; i < 40; ++i) scramble(*tasks[random() % tasks.size()]);
        lists[0]->setIsIsolated(true);
    }
}

}  // namespace
}  // namespace corvane
