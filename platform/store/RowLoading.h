// Rows into objects: whole rows of one entity, with the objects of to-one paths beside them, and faults
// filled together with their neighbours. For the store's own sources.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/store/ContextState.h"
#include "platform/store/SqlQuery.h"

namespace corvane {

struct SelectList;

/// The most rows that one statement is asked for by number.
inline constexpr std::size_t kLargestSlice = 500;

/// Objects that came in together. What one of them needs from the file is fetched for its whole slice.
struct LoadGroup {
    std::vector<ManagedObject*> objects;
    std::size_t sliceSize = kLargestSlice;
    std::string joins;  ///< of the paths to load along with the rows
    std::vector<SqlQuery::JoinedPath> joinedPaths;
};

/// Makes the objects one group.
void formGroup(const std::shared_ptr<LoadGroup>& group);
/// The slice of the object's group that it lies in; empty without a group.
std::span<ManagedObject* const> neighboursOf(const ObjectState& state);

/// Reads the columns of one entity's select list out of a row.
class RowReader {
  public:
    RowReader(ContextState& context, const EntityDescription& entity, const SelectList& list,
              int firstColumn);

    int endColumn() const { return endColumn_; }
    bool hasRow(const SqliteStatement& statement) const;
    /// The object of the row, filled once in a statement.
    ManagedObject& read(const SqliteStatement& statement, std::uint32_t serial) const;

  private:
    void fill(const SqliteStatement& statement, ManagedObject& object) const;
    void fillSlot(const SqliteStatement& statement, int column, ManagedObject& object,
                  PropertyIndex property) const;

    ContextState& context_;
    const EntityDescription& entity_;
    int firstColumn_;
    int endColumn_;
    std::vector<PropertyIndex> properties_;  ///< of the columns after Z_PK and Z_OPT
    std::vector<PropertyIndex> missing_;     ///< the file has no column for them
};

/// Reads rows of an entity under the alias t0 with the objects of joined to-one paths.
class RowPlan {
  public:
    /// @param paths  outlive the plan; a path stands after the path to its source
    RowPlan(ContextState& context, const EntityDescription& entity,
            std::span<const SqlQuery::JoinedPath> paths = {});

    /// "t0.Z_PK, t0.Z_OPT, ..., t1.Z_PK, ..."
    const std::string& selectText() const { return selectText_; }
    /// Objects whose row was read bear it.
    std::uint32_t serial() const { return serial_; }
    /// The object of the statement's row; those of the paths are filled as well.
    ManagedObject& read(const SqliteStatement& statement) const;

  private:
    struct Join {
        std::string_view keyPath;
        const EntityDescription* entity;
        RowReader reader;
        std::size_t source;  ///< 0: the row itself, else one more than the position of the join
        PropertyIndex relationship;
    };
    void addJoin(ContextState& context, const EntityDescription& entity, const SqlQuery::JoinedPath& path);
    ManagedObject* readJoined(const SqliteStatement& statement, const Join& join,
                              ManagedObject& source) const;

    std::string selectText_;
    std::uint32_t serial_;
    RowReader row_;
    std::vector<Join> joins_;
    mutable std::vector<ManagedObject*> sources_;
};

/// " IN (?, ?, ...)" with room for `count` values, rounded up so that few texts serve all counts.
std::string inList(std::size_t count);
/// Binds them from parameter 1 on, the last one again in the room that is left.
void bindInList(SqliteStatement& statement, std::span<const std::int64_t> keys);

/// Reads the rows of these numbers, at most kLargestSlice, and makes their objects a group. Registered
/// objects without a row are marked missing. An error leaves everything as it was.
void loadRows(ContextState& context, const EntityDescription& entity, std::span<const std::int64_t> keys,
              const LoadGroup* joined = nullptr);

/// Fills a fault, and the faults beside it with the same statement: its slice of the fetch that found it,
/// else those that the neighbours of the object refer to through which it was reached.
void loadFault(ManagedObject& fault);

/// Lets an object read its row afresh at the next access. Unsaved changes stay.
void turnIntoFault(ManagedObject& object);
/// Notes that the file has no row for an object.
void markMissing(ManagedObject& object);

}  // namespace corvane
