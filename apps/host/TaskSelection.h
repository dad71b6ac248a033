// Which tasks to show: a filter, a list, a predicate of the user's own, and their order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "model/GList.h"
#include "model/GUser.h"
#include "platform/store/FetchRequest.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

struct TaskSelection {
    std::optional<std::uint32_t> filter;  ///< a number of queries/TaskFilters.h; none: every live task
    /// Null: of a filter the list's own, else the default one; without a filter every account.
    GUser* account = nullptr;
    /// Instead of `account`: what is selected with any of them, or none, at hand.
    bool everyAccount = false;
    GList* list = nullptr;           ///< null: every list
    std::optional<Predicate> where;  ///< besides; the filters' variables are bound in it
    std::optional<int> order;        ///< a tasks order; none: what the filter or list remembers
    bool hideCompleted = false;
    bool rootsOnly = false;
};

/// The fetch of a selection, day boundaries as of now, lists and accounts loaded with the tasks.
FetchRequest requestForTasks(const TaskSelection& selection, ManagedObjectContext& context);

/// Why a predicate of the user's own cannot be asked, in one line: it names a variable that there is not, or
/// one on a side that takes no such value.
std::optional<std::string> faultOfVariables(const Predicate& where);

}  // namespace corvane
