// The sides of comparisons in SQL: columns, parameters, counts, and the members of to-many relationships.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/store/KeyPath.h"
#include "platform/store/PredicateNode.h"
#include "platform/store/SqlQuery.h"
#include "platform/store/SqlScope.h"

namespace corvane {

struct SqlOperand {
    enum class Kind : std::uint8_t { kNil, kNumber, kText, kBytes, kObject };

    Kind kind = Kind::kNil;
    std::string text = "NULL";
    const EntityDescription* entity = nullptr;  ///< of an object
    bool isConstant = false;
    bool isNilLiteral = false;
    std::string description = {};  ///< for messages: "dueDate (date)", "a text"
};

/// The members at the end of a path through to-many relationships, as parts of a subquery.
struct SqlMembers {
    std::string from;
    std::string condition;  ///< that they are members
    SqlOperand value;       ///< of the member at hand
};

/// Makes operands. The first thing that does not fit the model stays in `error`; operands made after it are
/// nil.
class SqlOperands {
  public:
    SqlOperands(const SqlColumns& columns, SqlQuery& query, std::string& error)
        : columns_(columns), query_(query), error_(error) {}

    SqlOperand operand(SqlScope& scope, const Expression& expression);
    /// A path without to-many relationships before its end, as `valueOfKeyPath` reads it.
    SqlOperand keyPath(SqlScope& scope, std::span<const KeyStep> steps, bool isCount);
    /// A path as `anyValueOfKeyPath` reads it.
    SqlMembers members(SqlScope& scope, const KeyPath& path);

    /// Whether the operator takes these kinds; otherwise an error.
    void checkFit(PredicateOperator op, const SqlOperand& left, const SqlOperand& right);

  private:
    SqlOperand constant(const Value& value);
    SqlOperand property(const SqlRow& row, const KeyStep& step);
    SqlOperand count(const SqlRow& row, const KeyStep& step);
    std::size_t toOneStepsAtFront(const EntityDescription& entity, std::span<const KeyStep> steps) const;
    bool addMemberTable(SqlMembers& members, SqlRow& row, const KeyStep& step);
    SqlRow subqueryRow(const EntityDescription& entity);
    void fail(const std::string& message) {
        if (error_.empty()) error_ = message;
    }

    const SqlColumns& columns_;
    SqlQuery& query_;
    std::string& error_;
    int subqueryRows_ = 0;
};

}  // namespace corvane
