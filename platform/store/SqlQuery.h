// The translation of a fetch into SQL.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/store/FetchRequest.h"
#include "platform/store/ModelDescription.h"

struct sqlite3;

namespace corvane {

/// Parts of a SELECT over an entity's table under the alias t0. Values are parameters, never text; only YES
/// and NO stand as 1 and 0.
struct SqlQuery {
    std::string joins;              ///< " LEFT JOIN ZGLIST t1 ON t1.Z_PK = t0.ZLIST ..."
    std::string where;              ///< a condition that may stand beside AND; "1" when every row fits
    std::string orderBy;            ///< ends in t0.Z_PK
    std::vector<Value> parameters;  ///< ?1, ?2, ... of `where`: integers, doubles, texts and bytes only

    /// False when a part of the predicate cannot be said in SQL: the rows are then a superset, to be judged
    /// in memory.
    bool isExact = true;

    struct JoinedPath {
        std::string keyPath;  ///< "list.user"
        std::string alias;    ///< "t2"
        const EntityDescription* entity = nullptr;
    };
    /// The to-one paths of `joins`: those of the predicate, of the sort keys and of the prefetching.
    std::vector<JoinedPath> joinedPaths;
};

/// Whether the file has a column. One that it lacks reads as the attribute's default.
using HasColumn = std::function<bool(const EntityDescription&, PropertyIndex)>;

/// A key path that the model does not know, or a comparison of kinds that do not fit (a number with a text),
/// gives none, and one line for people in `error`. Throws nothing.
///
/// The tables that are joined never drive the query: t0 is read by its own indexes, the others by row number.
std::optional<SqlQuery> sqlQueryForRequest(const FetchRequest& request, const ManagedObjectModel& model,
                                           const HasColumn& hasColumn, std::string& error);

/// Registers the functions and the collation that such queries call.
void registerQueryFunctions(sqlite3* database);

}  // namespace corvane
