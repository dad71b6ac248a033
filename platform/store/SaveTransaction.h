// One save: an immediate transaction, rolled back unless it was committed.
//
// After the first error nothing more is written, every further call does nothing, and `commit` reports that
// error. A row's version is its Z_OPT; NULL, which other tools leave there, counts as 0.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/store/ModelDescription.h"
#include "platform/store/SqliteStatement.h"
#include "platform/store/StoreError.h"
#include "platform/store/Value.h"

namespace corvane {

class SqliteStore;

class SaveTransaction {
  public:
    using ChangedValue = std::pair<PropertyIndex, Value>;

    /// Begins; waits for other writers up to the busy timeout. Refuses on a read-only store and on one whose
    /// file was replaced.
    explicit SaveTransaction(SqliteStore& store);
    ~SaveTransaction();
    SaveTransaction(const SaveTransaction&) = delete;
    SaveTransaction& operator=(const SaveTransaction&) = delete;

    bool failed() const { return error_.has_value(); }

    // Rows. A value other than its property's default whose column the file lacks gets that column.
    /// Takes `count` row numbers for new rows and raises Z_MAX. @return the first of them; 0 after an error
    std::int64_t takeKeys(const EntityDescription& entity, std::int64_t count);
    /// Writes a new row with version 1. Values that are nil need not be given.
    void insertRow(const EntityDescription& entity, std::int64_t key,
                   const std::vector<ChangedValue>& values);
    /// None when the row is gone.
    std::optional<std::int64_t> version(const EntityDescription& entity, std::int64_t key);
    /// Writes the changed columns if the row still has `version`, and raises it.
    /// @return the new version; none when the row has another version or is gone
    std::optional<std::int64_t> updateRow(const EntityDescription& entity, std::int64_t key,
                                          std::int64_t version, const std::vector<ChangedValue>& values);
    /// @return false when the row has another version or is gone
    bool deleteRow(const EntityDescription& entity, std::int64_t key, std::int64_t version);

    // References
    /// Sets a to-one column to NULL in every row that points at a deleted one, raising their versions.
    void nullifyReferences(const EntityDescription& entity, PropertyIndex toOne, std::int64_t key);
    /// Rows whose to-one column points at `key`, ascending.
    std::vector<std::int64_t> referencingKeys(const EntityDescription& entity, PropertyIndex toOne,
                                              std::int64_t key);

    [[nodiscard]] std::optional<StoreError> commit();

  private:
    /// An INSERT with all columns that the file has; `parameters` by property, 0 for one without a column.
    struct Insertion {
        SqliteStatement statement;
        std::vector<int> parameters;
    };
    using ColumnSet = std::pair<const EntityDescription*, std::vector<PropertyIndex>>;

    void begin();
    std::optional<SqliteStatement> prepare(const std::string& sql);
    bool run(SqliteStatement& statement);
    std::optional<std::int64_t> lastKey(const EntityDescription& entity);
    Insertion* insertionInto(const EntityDescription& entity);
    SqliteStatement* updateOf(ColumnSet columns);
    ColumnSet presentColumns(const EntityDescription& entity, const std::vector<ChangedValue>& values) const;

    bool makeRoom(const EntityDescription& entity, const std::vector<ChangedValue>& values);
    void addColumn(const EntityDescription& entity, PropertyIndex property);

    void fail(StoreError error);

    SqliteStore& store_;
    std::optional<StoreError> error_;
    bool isOpen_ = false;
    bool addedColumns_ = false;
    // Kept for the whole save, so that a row costs no look-up by text.
    std::map<const EntityDescription*, Insertion> insertions_;
    std::map<ColumnSet, SqliteStatement> updates_;
};

}  // namespace corvane
