// From a predicate's tree to a condition in SQL.
#pragma once

#include <string>

#include "platform/store/PredicateNode.h"
#include "platform/store/SqlQuery.h"
#include "platform/store/SqlScope.h"

namespace corvane {

/// Writes the condition into `where`, `parameters` and `isExact` of the query, and its joins into the scope.
/// @return false when the predicate does not fit the model; `error` then says why
bool writeCondition(const PredicateNodePointer& node, const SqlColumns& columns, SqlScope& scope,
                    SqlQuery& query, std::string& error);

}  // namespace corvane
