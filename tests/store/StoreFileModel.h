// The entities of a task store as rows: tests of the file layer need no classes over them.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/store/ModelDescription.h"
#include "platform/store/SaveTransaction.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

/// GUser, GList and GTask with every attribute that the file knows, and one declared index.
const ManagedObjectModel& storeFileModel();

const EntityDescription& userEntity();
const EntityDescription& listEntity();
const EntityDescription& taskEntity();
PropertyIndex propertyOf(const EntityDescription& entity, std::string_view name);

/// A value for an attribute of each entity, as a save takes it.
SaveTransaction::ChangedValue ofUser(std::string_view name, Value value);
SaveTransaction::ChangedValue ofList(std::string_view name, Value value);
SaveTransaction::ChangedValue ofTask(std::string_view name, Value value);

/// As the program opens its store.
PersistentStoreDescription storeAt(const std::filesystem::path& file);

/// The open store; what hinders it fails the test by throwing.
std::unique_ptr<SqliteStore> openedStore(const PersistentStoreDescription& description);
std::unique_ptr<SqliteStore> openedStore(const std::filesystem::path& file);

/// "Milk Bread Report": the names of all tasks in store order; "error: ..." for what failed first.
std::string taskNames(const std::filesystem::path& file);
/// Saves another name of the first task.
std::optional<StoreError> renameTask(SqliteStore& store, const std::u16string& name);

}  // namespace corvane
