#include "apps/host/TaskSearch.h"

#include <gtest/gtest.h>

#include "apps/host/Places.h"
#include "apps/host/TaskSelection.h"
#include "model/GSData.h"
#include "platform/foundation/Text.h"
#include "queries/TaskFilters.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

class TaskSearchTest : public testing::Test {
  protected:
    TaskSearchTest() {
        data_.launch();
        list_ = &listForNewTasks(context());
        add(u"Caf\u00E9 besuchen");
        add(u"Milk = cheese").setNotes(u"from the CAFE\u0301 around the corner");
        add(u"100% done").setCompleted(true);
        add(u"Stra\u00DFe").setPriority(50);
    }

    ManagedObjectContext& context() { return data_.viewContext(); }
    GTask& add(std::u16string_view name) {
        GTask& task = GTask::insertNewTaskToList(*list_, nullptr, nullptr);
        task.setName(name);
        return task;
    }
    std::string found(std::u16string_view text) {
        TaskSelection selection;
        selection.filter = kEverythingFilter;
        selection.order = 1;
        const std::optional<TaskSearch> search = taskSearchFromText(text);
        if (search) selection.where = search->condition;
        std::string names = search && search->isPredicate ? "predicate: " : "";
        for (const GTask* task : context().fetch<GTask>(requestForTasks(selection, context()))) {
            names += utf8FromText(*task->name()) + "|";
        }
        return names;
    }

    const TestEnvironment environment_;

  private:
    GSData data_;
    GList* list_ = nullptr;
};

TEST_F(TaskSearchTest, FindsTextInNamesAndNotesWhateverTheCaseAndAccents) {
    EXPECT_EQ(found(u"  cafe "), "Caf\u00E9 besuchen|Milk = cheese|");
    EXPECT_EQ(found(u"STRASSE"), "Stra\u00DFe|");
    EXPECT_EQ(found(u"100%"), "100% done|");
    EXPECT_EQ(found(u"'"), "");
    EXPECT_EQ(found(u" \t"), "Stra\u00DFe|100% done|Caf\u00E9 besuchen|Milk = cheese|");
}

TEST_F(TaskSearchTest, ReadsAPredicateAsSoonAsItIsOne) {
    EXPECT_EQ(found(u"priority >= 50"), "predicate: Stra\u00DFe|");
    EXPECT_EQ(found(u"completed == YES"), "predicate: 100% done|");
    EXPECT_EQ(found(u"list.user == $USER AND notes != nil"), "predicate: Milk = cheese|");
    EXPECT_EQ(found(u"milk = cheese or"), "");
}

TEST_F(TaskSearchTest, SaysWhereAPredicateGoesWrongAndSearchesForTheText) {
    EXPECT_EQ(found(u"milk = "), "Milk = cheese|");
    const std::optional<TaskSearch> search = taskSearchFromText(u"milk = ");
    ASSERT_TRUE(search && search->problem);
    EXPECT_NE(search->problem->find(u"at character 7"), std::u16string::npos)
        << utf8FromText(*search->problem);
    EXPECT_EQ(taskSearchFromText(u"dueDate < $FOO")->problem,
              u"Searched as text. No predicate: there is no variable $FOO");
    for (const char16_t* text : {u"milk", u"buy milk and bread", u"(", u"%@", u"NOT"}) {
        SCOPED_TRACE(utf8FromText(text));
        EXPECT_FALSE(taskSearchFromText(text)->problem);
        EXPECT_FALSE(taskSearchFromText(text)->isPredicate);
    }
}

}  // namespace
}  // namespace corvane
