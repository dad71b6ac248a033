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
    constexpr const char* kDue = "-priority, -hasDueDate, dueDate, displayOrder";
    const std::string byPosition = std::string("list.displayOrder, ") + kDue;
    const std::string byTitle = std::string("list.name~, ") + kDue;
    const std::string full = std::string(kDue) + ", list.name~, name~";
    const std::tuple<std::int64_t, std::int32_t, std::int32_t, const char*> rows[] = {
        {0, 0, 8, "displayOrder"                   },
        {0, 0, 5, "list.displayOrder, displayOrder"},
        {1, 0, 5, "list.name~, displayOrder"       },
        {0, 0, 1, byPosition.c_str()               },
        {1, 0, 1, byTitle.c_str()                  },
        {1, 1, 8, "-priority, name~"               },
        {0, 2, 8, full.c_str()                     },
        {0, 3, 1, "none"                           },
    };
    for (const auto& [listsOrder, order, filter, expected] : rows) {
        SCOPED_TRACE(testing::Message() << order << " " << filter);
        ASSERT_TRUE(corvaneUserDefaults().setObject("ListsOrder", {listsOrder}));
        EXPECT_EQ(keys(order, filter), expected);
    }
}

}  // namespace
}  // namespace corvane
