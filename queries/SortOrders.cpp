// Tasks orders as sort keys.
#include "model/CorvaneUserDefaults.h"
#include "model/GSData.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

constexpr bool kAscending = true;
constexpr bool kDescending = false;

SortDescriptor byTitle(const char* keyPath) {
    return {keyPath, kAscending, SortDescriptor::Comparison::kLocalizedCaseInsensitive};
}

SortDescriptor byListsOrder() {
    const std::optional<PropertyList> order = corvaneUserDefaults().objectForKey("ListsOrder");
    const bool listsByTitle = order && order->integer().value_or(0) != 0;
    return listsByTitle ? byTitle("list.name") : SortDescriptor{"list.displayOrder"};
}

using SortKeys = std::vector<SortDescriptor>;

SortKeys manualOrder(std::uint32_t filter) {
    if (filter == kListFilter) return {{"displayOrder"}};
    const SortDescriptor lists = byListsOrder();
    if (filter == kEverythingFilter) return {lists, {"displayOrder"}};
    return {
        lists, {"priority",   kDescending},
         {"hasDueDate",            kDescending},
         {"dueDate"},
         {"displayOrder"   }
    };
}

}  // namespace

std::optional<std::vector<SortDescriptor>> GSData::sortDescriptorsForTasksOrder(std::int32_t tasksOrder,
                                                                                std::int32_t filter) {
    switch (tasksOrder) {
        case 0:
            return manualOrder(static_cast<std::uint32_t>(filter));
        case 1:
            return SortKeys{
                {"priority", kDescending},
                byTitle("name")
            };
        case 2:
            // Ties go by list title whatever the user's order of lists is.
            return SortKeys{
                {"priority",   kDescending},
                {"hasDueDate",            kDescending},
                {"dueDate"},
                {"displayOrder"   },
                byTitle("list.name"),        byTitle("name")
            };
        default:
            return std::nullopt;
    }
}

}  // namespace corvane
