// The schema of a store file as it is found, matched with the model by name.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/ModelDescription.h"

namespace corvane {

class SqliteDatabase;

/// The columns of an entity that the file has, as they stand in a select list.
struct SelectList {
    std::string text;  ///< "t0.Z_PK, t0.Z_OPT, t0.ZNAME, ..." with the alias it was made for
    std::vector<PropertyIndex> properties;  ///< of the columns after Z_PK and Z_OPT, in order
};

class StoreSchema {
  public:
    explicit StoreSchema(const ManagedObjectModel& model);

    enum class Reading {
        kFits,     ///< Z_METADATA and Z_PRIMARYKEY are there, every entity has its number and its table
        kForeign,  ///< a sound database of something else
        kFailed,   ///< the database cannot be read; the connection says why
    };

    /// Whether the file is a store of the model, without a look at its columns.
    static Reading recognise(SqliteDatabase& database, const ManagedObjectModel& model);
    /// Reads the schema of the file. Unless it fits, all stays as it was.
    Reading read(SqliteDatabase& database);
    /// As `read`, when the schema changed since it was read last.
    void readIfChanged(SqliteDatabase& database);
    /// As above, when the connection's last read has noticed a commit.
    void readIfNoticed(SqliteDatabase& database);
    /// The next look reads it whatever its version says.
    void forget() { version_ = kUnknown; }

    /// Whether the application keeps persistent history in the file.
    bool hasHistory() const { return hasHistory_; }
    /// Z_ENT.
    std::int64_t entityNumber(const EntityDescription& entity) const { return table(entity).number; }
    bool hasColumn(const EntityDescription& entity, PropertyIndex property) const;
    /// Whether every attribute and to-one relationship of the model has its column.
    bool isComplete() const;
    const SelectList& selectList(const EntityDescription& entity, std::string_view alias);

  private:
    static constexpr std::int64_t kUnknown = -1;

    struct Table {
        std::int64_t number = 0;
        std::vector<bool> columns;                                   ///< by property: whether the file has it
        std::map<std::string, SelectList, std::less<>> selectLists;  ///< by alias
    };
    const Table& table(const EntityDescription& entity) const;
    void fill(SelectList& list, const EntityDescription& entity, std::string_view alias) const;
    void readColumns(SqliteDatabase& database);

    const ManagedObjectModel* model_;
    std::vector<Table> tables_;  ///< in the model's order of entities
    bool hasHistory_ = false;
    std::int64_t version_ = kUnknown;  ///< SQLite's schema cookie
    std::uint32_t noticed_ = 0;        ///< the pager's count of commits when the schema was looked at last
};

}  // namespace corvane
