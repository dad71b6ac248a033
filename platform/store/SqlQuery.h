// The translation of a fetch into SQL.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/store/FetchRequest.h"
#include "platform/store/ModelDescription.h"

struct sqlite3;

namespace corvane {

/// Parts of a SELECT over an entity's table under the alias t0. Values are parameters, never text.
struct SqlQuery {
    std::string joins;              ///< " LEFT JOIN ZGLIST t1 ON t1.Z_PK = t0.ZLIST ..."
    std::string where;              ///< a condition; "1" when every row fits
    std::string orderBy;            ///< ends in t0.Z_PK
    std::vector<Value> parameters;  ///< of `where`; a ManagedObject* stands for its row number

    /// False when a part of the predicate cannot be said in SQL: the rows are then a superset, to be judged
    /// in memory.
    bool isExact = true;

    /// Alias of each joined to-one path ("list" → "t1").
    std::vector<std::pair<std::string, std::string>> aliases;
};

/// Whether the file has a column. One that it lacks reads as the attribute's default.
using HasColumn = std::function<bool(const EntityDescription&, PropertyIndex)>;

/// @throws nothing; a key path that the model does not know gives `std::nullopt` and the reason in `error`
std::optional<SqlQuery> sqlQueryForRequest(const FetchRequest& request, const ManagedObjectModel& model,
                                           const HasColumn& hasColumn, std::string& error);

/// Registers the functions and the collation that such queries call.
void registerQueryFunctions(sqlite3* database);

}  // namespace corvane
