// Tasks orders as keys, and as the store applies them.
#include "QueryFixture.h"
#include "model/CorvaneUserDefaults.h"

namespace corvane {
namespace {

class SortOrderTest : public QueryTest {
  protected:
    // "-priority, list.name~": '-' descending, '~' by title.
    static std::string keys(std::int32_t order, std::int32_t filter) {
        const auto found = GSData::sortDescriptorsForTasksOrder(order, filter);
        if (!found) return "none";
        std::string text;
        for (const SortDescriptor& key : *found) {
            if (!text.empty()) text += ", ";
            const bool byTitle = key.comparison == SortDescriptor::Comparison::kLocalizedCaseInsensitive;
            text += (key.ascending ? "" : "-") + key.keyPath + (byTitle ? "~" : "");
        }
        return text;
    }
};

TEST_F(SortOrderTest, KeysByOrderFilterAndListsOrder) {
    struct Row {
        std::int64_t listsOrder;
        std::int32_t order, filter;
        const char* expected;
    };
    constexpr const char* kDue = "-priority, -hasDueDate, dueDate, displayOrder";
    const std::string byPosition = std::string("list.displayOrder, ") + kDue;
    const std::string byTitle = std::string("list.name~, ") + kDue;
    const std::string full = std::string(kDue) + ", list.name~, name~";
    const Row rows[] = {
        {0, 0, 8, "displayOrder"                   },
        {0, 0, 5, "list.displayOrder, displayOrder"},
        {1, 0, 5, "list.name~, displayOrder"       },
        {0, 0, 1, byPosition.c_str()               },
        {1, 0, 1, byTitle.c_str()                  },
        {1, 1, 8, "-priority, name~"               },
        {0, 2, 8, full.c_str()                     },
        {0, 3, 1, "none"                           },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.order << " " << row.filter);
        ASSERT_TRUE(corvaneUserDefaults().setObject("ListsOrder", {row.listsOrder}));
        EXPECT_EQ(keys(row.order, row.filter), row.expected);
    }
}

TEST_F(SortOrderTest, TheStoreAppliesThem) {
    plant(list(), "b a C q d e");
    const auto set = [&](const char* name, std::int32_t priority, const char* due) {
        named(name).setPriority(priority);
        if (due) named(name).setDueDate(at(due));
        named(name).setHasDueDate(due != nullptr);
    };
    set("b", 0, nullptr);
    set("a", 0, "2024-03-07");
    set("C", 0, "2024-03-06");
    set("q", 50, nullptr);
    named("q").setName(u"ä");
    set("d", 50, "2024-03-09");
    set("e", -1, nullptr);
    constexpr std::tuple<std::int32_t, std::int32_t, const char*> kRows[] = {
        {0, 8, "b a C ä d e"},
        {0, 1, "d ä C a b e"},
        {1, 1, "ä d a b C e"},
        {2, 1, "d ä C a b e"},
    };
    for (const bool saved : {false, true}) {
        if (saved) save();
        for (const auto& [order, filter, expected] : kRows) {
            FetchRequest request;
            request.sortDescriptors = *GSData::sortDescriptorsForTasksOrder(order, filter);
            EXPECT_EQ(names(context().fetch<GTask>(request)), expected) << order << " " << filter;
        }
    }
}

}  // namespace
}  // namespace corvane
