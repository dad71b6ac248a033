// The entities of a task store as rows: tests of the file layer need no classes over them.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/store/ModelDescription.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

/// GUser, GList and GTask with every attribute that the file knows, and one declared index.
const ManagedObjectModel& storeFileModel();

const EntityDescription& userEntity();
const EntityDescription& listEntity();
const EntityDescription& taskEntity();
PropertyIndex propertyOf(const EntityDescription& entity, std::string_view name);

/// As the program opens its store.
PersistentStoreDescription storeAt(const std::filesystem::path& file);

/// The open store; what hinders it fails the test by throwing.
std::unique_ptr<SqliteStore> openedStore(const PersistentStoreDescription& description);
std::unique_ptr<SqliteStore> openedStore(const std::filesystem::path& file);

}  // namespace corvane
