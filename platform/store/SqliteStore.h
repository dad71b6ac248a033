// The store file: one SQLite connection that stays open, the schema as it is found, rows in and out.
//
// Nothing here knows of objects or contexts. A row is identified by entity and Z_PK. What the model does not
// know in the file stays as it is.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/store/ModelDescription.h"
#include "platform/store/PersistentStoreDescription.h"
#include "platform/store/SqliteStatement.h"
#include "platform/store/StoreError.h"

namespace corvane {

/// The columns of an entity that the file has, as they stand in a select list.
struct SelectList {
    std::string text;  ///< "t0.Z_PK, t0.Z_OPT, t0.ZNAME, ..." with the alias it was made for
    std::vector<PropertyIndex> properties;  ///< of the columns after Z_PK and Z_OPT, in order
};

class SqliteStore {
  public:
    /// Opens the file, recognises it and, where the description allows and nothing is there, makes it. On an
    /// error a file that was there is as it was, its companions included.
    static std::variant<std::unique_ptr<SqliteStore>, StoreError> open(
        const PersistentStoreDescription& description, const ManagedObjectModel& model);
    /// Closes without copying the log into the main file and without removing the companions.
    ~SqliteStore();

    const std::filesystem::path& file() const;
    const std::string& uuid() const;
    const ManagedObjectModel& model() const;
    /// Persistent history, or a file or directory that cannot be written.
    bool isReadOnly() const;
    /// Whether this program made the store.
    bool isOurs() const;

    /// A number that moves when, and only when, another connection has committed.
    std::int64_t dataVersion();

    // Schema. Read again when another process changed it.
    bool hasColumn(const EntityDescription& entity, PropertyIndex property);
    const SelectList& selectList(const EntityDescription& entity, std::string_view alias = "t0");

    // Statements
    /// A prepared statement from the cache, or why the text cannot be prepared.
    std::variant<SqliteStatement, StoreError> prepare(const std::string& sql);
    /// The error of the statement that failed last.
    StoreError lastError() const;
    /// How many statements were stepped since the store was opened.
    std::size_t statementCount() const;

  private:
    friend class SaveTransaction;
    struct Implementation;
    explicit SqliteStore(std::unique_ptr<Implementation> implementation);
    std::unique_ptr<Implementation> implementation_;
};

/// One save: an immediate transaction, rolled back unless it was committed. After the first error every
/// further call does nothing, and `commit` reports that error.
class SaveTransaction {
  public:
    using ChangedValue = std::pair<PropertyIndex, Value>;

    /// Begins; waits for other writers up to the busy timeout. Refuses on a read-only store.
    explicit SaveTransaction(SqliteStore& store);
    ~SaveTransaction();
    SaveTransaction(const SaveTransaction&) = delete;
    SaveTransaction& operator=(const SaveTransaction&) = delete;

    bool failed() const;

    /// Takes `count` row numbers for new rows and raises Z_MAX. @return the first of them
    std::int64_t takeKeys(const EntityDescription& entity, std::int64_t count);

    /// Writes a new row with Z_OPT 1. Values that are nil need not be given.
    void insertRow(const EntityDescription& entity, std::int64_t key,
                   const std::vector<ChangedValue>& values);
    /// The row's Z_OPT (NULL counts as 0); none when the row is gone.
    std::optional<std::int64_t> version(const EntityDescription& entity, std::int64_t key);
    /// Writes the changed columns if the row still has `version`, and raises it.
    /// @return the new version; none when the row has another version or is gone
    std::optional<std::int64_t> updateRow(const EntityDescription& entity, std::int64_t key,
                                          std::int64_t version, const std::vector<ChangedValue>& values);
    /// @return false when the row has another version or is gone
    bool deleteRow(const EntityDescription& entity, std::int64_t key, std::int64_t version);
    /// Sets a to-one column to NULL in every row that points at a deleted one, raising their versions.
    void nullifyReferences(const EntityDescription& entity, PropertyIndex toOne, std::int64_t key);
    /// Rows whose to-one column points at `key`.
    std::vector<std::int64_t> referencingKeys(const EntityDescription& entity, PropertyIndex toOne,
                                              std::int64_t key);

    [[nodiscard]] std::optional<StoreError> commit();

  private:
    SqliteStore& store_;
    std::optional<StoreError> error_;
    bool isOpen_ = false;
};

}  // namespace corvane
