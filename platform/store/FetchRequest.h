// What to fetch, and how much of it to load at once.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/store/Predicate.h"
#include "platform/store/SortDescriptor.h"

namespace corvane {

struct FetchRequest {
    std::string entityName;
    std::optional<Predicate> predicate = std::nullopt;
    std::vector<SortDescriptor> sortDescriptors = {};
    std::size_t fetchLimit = 0;  ///< 0: no limit

    /// 0: the rows come in whole with the fetch. Otherwise the fetch brings identities only, and the first
    /// access to an object loads it together with its neighbours in the result, this many in one statement.
    std::size_t fetchBatchSize = 0;

    /// To-one paths ("list.user") whose objects are loaded in the same statement as the rows.
    std::vector<std::string> relationshipKeyPathsForPrefetching = {};
};

}  // namespace corvane
