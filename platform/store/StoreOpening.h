// Opening a store file: recognising it without a trace, and the best connection that its place allows.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <variant>

#include "platform/store/ModelDescription.h"
#include "platform/store/PersistentStoreDescription.h"
#include "platform/store/SqliteDatabase.h"
#include "platform/store/StoreError.h"
#include "platform/store/StoreMetadata.h"
#include "platform/store/StoreSchema.h"

namespace corvane {

struct OpenedStore {
    std::filesystem::path file;  ///< absolute
    std::unique_ptr<SqliteDatabase> database;
    StoreMetadata metadata;
    StoreSchema schema;
    std::string readOnlyReason;  ///< why the file's place does not allow to save; empty when it does
};

/// Makes the file where it is missing and may be made, recognises it and connects to it. A file that is no
/// store of the model stays as it is, its companions included.
std::variant<OpenedStore, StoreError> openStore(PersistentStoreDescription description,
                                                const ManagedObjectModel& model);

}  // namespace corvane
