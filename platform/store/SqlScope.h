// Tables in a FROM clause and the key paths that start at one of them.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/store/KeyPath.h"
#include "platform/store/ModelDescription.h"
#include "platform/store/SqlQuery.h"

namespace corvane {

/// A row of an entity's table under an alias.
struct SqlRow {
    const EntityDescription* entity = nullptr;
    std::string alias;
};

/// The file's columns as SQL.
class SqlColumns {
  public:
    SqlColumns(const ManagedObjectModel& model, const HasColumn& hasColumn)
        : model_(model), hasColumn_(hasColumn) {}

    const ManagedObjectModel& model() const { return model_; }

    /// "t0.ZNAME". For a column that the file lacks the attribute's default, where there is a row.
    std::string text(const SqlRow& row, PropertyIndex property) const;

    /// The condition that `member` belongs to a to-many relationship of `owner`.
    std::string membership(const SqlRow& owner, PropertyIndex toMany, const SqlRow& member) const;

  private:
    const ManagedObjectModel& model_;
    const HasColumn& hasColumn_;
};

/// A row and the rows joined to it, each to-one path once. A row that is not there is a row of NULLs.
class SqlScope {
  public:
    SqlScope(const SqlColumns& columns, SqlRow root, std::string aliasPrefix)
        : columns_(columns), root_(std::move(root)), aliasPrefix_(std::move(aliasPrefix)) {}

    const SqlRow& root() const { return root_; }
    const std::string& joins() const { return joins_; }
    const std::vector<SqlQuery::JoinedPath>& joinedPaths() const { return joinedPaths_; }
    /// How often a joined row was asked for.
    std::size_t uses() const { return uses_; }

    /// The row at the end of to-one steps, joined on first use. None when a step is no to-one relationship of
    /// its entity; `error` then says so.
    std::optional<SqlRow> rowAt(std::span<const KeyStep> toOneSteps, std::string& error);

    /// Gives up the joins made since there were `count`.
    void truncate(std::size_t count);

  private:
    SqlRow joinedRow(const std::string& keyPath, const SqlRow& from, PropertyIndex toOne);

    const SqlColumns& columns_;
    SqlRow root_;
    std::string aliasPrefix_;
    std::string joins_;
    std::vector<SqlQuery::JoinedPath> joinedPaths_;
    std::vector<std::size_t> joinStarts_;  // where each join begins in the text
    std::size_t uses_ = 0;
};

/// The property of a key, or none and the reason in `error`.
std::optional<PropertyIndex> propertyOfStep(const EntityDescription& entity, const KeyStep& step,
                                            std::string& error);

}  // namespace corvane
