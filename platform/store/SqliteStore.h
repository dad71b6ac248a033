// The store file: one SQLite connection that stays open, the schema as it is found, rows in and out.
//
// Nothing here knows of objects or contexts. A row is identified by entity and Z_PK. What the model does not
// know in the file stays as it is.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "platform/store/ModelDescription.h"
#include "platform/store/PersistentStoreDescription.h"
#include "platform/store/SqliteStatement.h"
#include "platform/store/StoreError.h"
#include "platform/store/StoreMetadata.h"
#include "platform/store/StoreSchema.h"

namespace corvane {

class SqliteDatabase;
struct OpenedStore;

class SqliteStore {
  public:
    /// What tells one file from another that took its name.
    struct FileIdentity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        bool operator==(const FileIdentity&) const = default;
    };

    /// Opens the file, recognises it and, where the description allows and nothing is there, makes it. On an
    /// error a file that was there is as it was, its companions included.
    static std::variant<std::unique_ptr<SqliteStore>, StoreError> open(
        const PersistentStoreDescription& description, const ManagedObjectModel& model);
    /// Closes without copying the log into the main file and without removing the companions.
    ~SqliteStore();

    const std::filesystem::path& file() const { return file_; }  ///< absolute
    const std::string& uuid() const { return metadata_.uuid; }
    const ManagedObjectModel& model() const { return model_; }
    /// Why nothing can be saved: persistent history, or a file or directory that cannot be written. Empty
    /// when saving is possible.
    const std::string& readOnlyReason() const;
    bool isReadOnly() const { return !readOnlyReason().empty(); }
    /// Whether this program made the store.
    bool isOurs() const { return metadata_.isOurs; }

    /// A number that moves when, and only when, another connection has committed.
    std::int64_t dataVersion();
    /// Whether the path names another file by now, or none: the store must be opened afresh.
    bool isReplaced() const;

    // Schema. Read again once a look into the file, such as dataVersion, has met another process's change.
    bool hasColumn(const EntityDescription& entity, PropertyIndex property);
    /// The reference stays valid; what it refers to is renewed with the schema.
    const SelectList& selectList(const EntityDescription& entity, std::string_view alias = "t0");

    // Statements
    /// A prepared statement from the cache, or why the text cannot be prepared.
    std::variant<SqliteStatement, StoreError> prepare(std::string_view sql);
    /// The error of the statement that failed last.
    StoreError lastError() const;
    /// How many statements were run since the store was opened.
    std::size_t statementCount() const;

  private:
    friend class SaveTransaction;
    SqliteStore(const ManagedObjectModel& model, OpenedStore opened);

    std::filesystem::path file_;
    FileIdentity identity_;
    const ManagedObjectModel& model_;
    std::unique_ptr<SqliteDatabase> database_;
    StoreMetadata metadata_;
    StoreSchema schema_;
    std::string placeReason_;  ///< why the place does not allow to save
    std::int64_t dataVersion_ = 0;
};

}  // namespace corvane
