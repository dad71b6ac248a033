// The tables of a model in the platform's spelling: text and order of columns as the platform writes them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/ModelDescription.h"

namespace corvane {

/// "INTEGER", "TIMESTAMP", "FLOAT", "VARCHAR" or "BLOB". Not for a to-many relationship, which has no column.
std::string_view declaredType(PropertyKind kind);

/// Whether a property without a value of its own is 0 in the file rather than NULL.
bool defaultsToZero(PropertyKind kind);

/// The statements that make the schema of a new store: the entities' tables, the index of each to-one
/// relationship, the indexes that the model declares, the platform's own tables.
std::vector<std::string> statementsForNewTables(const ManagedObjectModel& model);

}  // namespace corvane
