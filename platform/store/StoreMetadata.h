// What a store says of itself: the row of Z_METADATA.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/PropertyList.h"

namespace corvane {

class SqliteDatabase;

struct StoreMetadata {
    std::string uuid;     ///< capitals, as stored
    bool isOurs = false;  ///< this program made the store
};

/// Reads the row. An unreadable list of properties counts as empty; none when the table cannot be read.
std::optional<StoreMetadata> readStoreMetadata(SqliteDatabase& database);

/// The list of properties of a store that this program makes. It has no hashes of the model: the platform
/// takes such a store as fitting every model, and wrong ones would make it refuse the store.
Bytes propertiesOfNewStore();

/// A random UUID (RFC 9562, version 4) in capitals.
std::string newStoreUuid();

}  // namespace corvane
