#include "platform/store/SqlOperand.h"

#include <optional>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/ManagedObject.h"
#include "platform/store/PredicateOperators.h"

namespace corvane {

namespace {

using Kind = SqlOperand::Kind;

Kind kindOf(PropertyKind kind) {
    switch (kind) {
        case PropertyKind::kBoolean:
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
        case PropertyKind::kDouble:
        case PropertyKind::kDate:
            return Kind::kNumber;
        case PropertyKind::kString:
            return Kind::kText;
        case PropertyKind::kTransformable:
            return Kind::kBytes;
        case PropertyKind::kToOne:
        case PropertyKind::kToMany:
            return Kind::kObject;
    }
    return Kind::kNil;
}

std::string describedKind(const PropertyDescription& property) {
    switch (property.kind) {
        case PropertyKind::kBoolean:
            return "boolean";
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
        case PropertyKind::kDouble:
            return "number";
        case PropertyKind::kDate:
            return "date";
        case PropertyKind::kString:
            return "text";
        case PropertyKind::kTransformable:
            return "bytes";
        case PropertyKind::kToOne:
        case PropertyKind::kToMany:
            return std::string(property.destination);
    }
    return {};
}

// How a constant is bound, and what it is.
struct BoundConstant {
    Kind kind = Kind::kNumber;
    Value parameter;
    const char* description = textKey("a number");
};

BoundConstant boundConstant(const Value& value) {
    if (const auto* date = std::get_if<Date>(&value)) {
        return {Kind::kNumber, date->time_since_epoch().count(), textKey("a date")};
    }
    if (const auto* object = std::get_if<ManagedObject*>(&value)) {
        return {Kind::kObject, rowNumberOf(**object), textKey("an object")};
    }
    if (std::holds_alternative<std::u16string>(value)) return {Kind::kText, value, textKey("a text")};
    if (std::holds_alternative<Bytes>(value)) return {Kind::kBytes, value, textKey("bytes")};
    return {.parameter = value};
}

// Constants are described by keys; what names a property reads the same in every language.
std::u16string shown(const SqlOperand& operand) { return localizedString(operand.description.c_str()); }

bool isNilOperand(const SqlOperand& operand) { return operand.kind == Kind::kNil; }

}  // namespace

SqlOperand SqlOperands::operand(SqlScope& scope, const Expression& expression) {
    if (const auto* path = expression.get<KeyPath>()) return keyPath(scope, path->steps, path->isCount);
    if (expression.isNilLiteral()) return {.isConstant = true, .isNilLiteral = true};
    if (const auto* constant = expression.get<ConstantExpression>()) return this->constant(constant->value);
    return {};
}

SqlOperand SqlOperands::constant(const Value& value) {
    // YES and NO stand in the text. A partial index that is made for them then serves at once; for parameters
    // SQLite prepares the statement anew each time one is bound.
    if (const auto* flag = std::get_if<bool>(&value)) {
        return {.kind = Kind::kNumber,
                .text = *flag ? "1" : "0",
                .isConstant = true,
                .description = textKey("a boolean")};
    }
    BoundConstant bound = boundConstant(value);
    query_.parameters.push_back(std::move(bound.parameter));
    SqlOperand operand{.kind = bound.kind, .isConstant = true, .description = bound.description};
    operand.text = "?" + std::to_string(query_.parameters.size());
    if (const auto* object = std::get_if<ManagedObject*>(&value)) {
        operand.entity = &(*object)->entity();
        operand.description = "an object (" + std::string(operand.entity->name()) + ")";
    }
    return operand;
}

SqlOperand SqlOperands::keyPath(SqlScope& scope, std::span<const KeyStep> steps, bool isCount) {
    if (steps.empty()) {
        const SqlRow& row = scope.root();
        return {.kind = Kind::kObject,
                .text = row.alias + ".Z_PK",
                .entity = row.entity,
                .description = "SELF (" + std::string(row.entity->name()) + ")"};
    }
    std::string reason;
    const std::optional<SqlRow> row = scope.rowAt(steps.first(steps.size() - 1), reason);
    if (!row) {
        fail(reason);
        return {};
    }
    return isCount ? count(*row, steps.back()) : property(*row, steps.back());
}

SqlOperand SqlOperands::property(const SqlRow& row, const KeyStep& step) {
    std::string reason;
    const std::optional<PropertyIndex> index = propertyOfStep(*row.entity, step, reason);
    if (!index) {
        fail(reason);
        return {};
    }
    const PropertyDescription& property = row.entity->property(*index);
    if (property.kind == PropertyKind::kToMany) {
        fail(localizedUtf8("%@ is a to-many relationship: ask with ANY, ALL, NONE or @count",
                           {textFromUtf8(step.key)}));
        return {};
    }
    SqlOperand operand{.kind = kindOf(property.kind), .text = columns_.text(row, *index)};
    if (property.isRelationship()) operand.entity = &columns_.model().destinationOf(*row.entity, *index);
    operand.description = step.key + " (" + describedKind(property) + ")";
    return operand;
}

SqlOperand SqlOperands::count(const SqlRow& row, const KeyStep& step) {
    std::string reason;
    const std::optional<PropertyIndex> index = propertyOfStep(*row.entity, step, reason);
    if (!index || row.entity->property(*index).kind != PropertyKind::kToMany) {
        fail(index
                 ? localizedUtf8("%@ is no to-many relationship: it has no @count", {textFromUtf8(step.key)})
                 : reason);
        return {};
    }
    const SqlRow member = subqueryRow(columns_.model().destinationOf(*row.entity, *index));
    return {.kind = Kind::kNumber,
            .text = "(SELECT count(*) FROM " + member.entity->table() + " " + member.alias + " WHERE " +
                    columns_.membership(row, *index, member) + ")",
            .description = step.key + ".@count (number)"};
}

SqlMembers SqlOperands::members(SqlScope& scope, const KeyPath& path) {
    SqlMembers members;
    std::span<const KeyStep> rest = path.steps;
    // What comes before the first to-many relationship is joined outside of the subquery.
    const std::size_t toOneSteps = toOneStepsAtFront(*scope.root().entity, rest);
    std::string reason;
    SqlRow row = scope.rowAt(rest.first(toOneSteps), reason).value_or(scope.root());
    rest = rest.subspan(toOneSteps);
    while (!rest.empty() && !(path.isCount && rest.size() == 1) &&
           addMemberTable(members, row, rest.front())) {
        rest = rest.subspan(1);
    }
    if (members.from.empty()) {
        fail(localizedUtf8("%@ leads through no to-many relationship", {textFromKeyPath(path)}));
        return members;
    }
    SqlScope memberScope(columns_, row, row.alias + "_");
    members.value = keyPath(memberScope, rest, path.isCount);
    members.from += memberScope.joins();
    return members;
}

std::size_t SqlOperands::toOneStepsAtFront(const EntityDescription& entity,
                                           std::span<const KeyStep> steps) const {
    const EntityDescription* holder = &entity;
    std::size_t count = 0;
    for (const KeyStep& step : steps) {
        const std::optional<PropertyIndex> index = step.indexIn(*holder);
        if (!index || holder->property(*index).kind != PropertyKind::kToOne) break;
        holder = &columns_.model().destinationOf(*holder, *index);
        ++count;
    }
    return count;
}

// Moves from a row to the members of its to-many relationship; false where the step is none.
bool SqlOperands::addMemberTable(SqlMembers& members, SqlRow& row, const KeyStep& step) {
    const std::optional<PropertyIndex> index = step.indexIn(*row.entity);
    if (!index || row.entity->property(*index).kind != PropertyKind::kToMany) return false;
    const SqlRow member = subqueryRow(columns_.model().destinationOf(*row.entity, *index));
    const std::string table = member.entity->table() + " " + member.alias;
    const std::string condition = columns_.membership(row, *index, member);
    if (members.from.empty()) {
        members.from = table;
        members.condition = condition;
    } else {
        members.from += " JOIN " + table + " ON " + condition;
    }
    row = member;
    return true;
}

void SqlOperands::checkFit(PredicateOperator op, const SqlOperand& left, const SqlOperand& right) {
    for (const SqlOperand* side : {&left, &right}) {
        if (isTextOperator(op) && side->kind != Kind::kText && !isNilOperand(*side)) {
            return fail(
                localizedUtf8("%1$@ is no text for %2$@", {shown(*side), std::u16string(namesOf(op).text)}));
        }
        if (side->kind == Kind::kObject && !isEquality(op)) {
            return fail(localizedUtf8("%@ is an object: only ==, != and IN work on it", {shown(*side)}));
        }
    }
    if (isNilOperand(left) || isNilOperand(right)) return;
    if (left.kind != right.kind || left.entity != right.entity) {
        fail(localizedUtf8("%1$@ cannot be compared with %2$@", {shown(left), shown(right)}));
    }
}

SqlRow SqlOperands::subqueryRow(const EntityDescription& entity) {
    return {&entity, "s" + std::to_string(++subqueryRows_)};
}

}  // namespace corvane
