#include "platform/store/SqlQuery.h"

#include <span>
#include <utility>
#include <variant>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/KeyPath.h"
#include "platform/store/QueryFunctions.h"
#include "platform/store/SqlCondition.h"
#include "platform/store/SqlOperand.h"
#include "platform/store/SqlScope.h"

namespace corvane {

namespace {

// SQLite joins 64 tables at most.
constexpr std::size_t kMaxJoinedTables = 60;

std::optional<KeyPath> keyPathOf(const std::string& text, std::string& error) {
    std::variant<KeyPath, PredicateError> path = keyPathFromText(std::u16string(text.begin(), text.end()));
    auto* read = std::get_if<KeyPath>(&path);
    if (read && !read->steps.empty() && !read->isCount) return std::move(*read);
    error = localizedUtf8("\"%@\" is no key path of a property", {textFromUtf8(text)});
    return std::nullopt;
}

// Adds one key to ORDER BY. A column that the file lacks orders nothing.
bool addSortKey(const SortDescriptor& key, SqlOperands& operands, SqlScope& scope, std::string& orderBy,
                std::string& error) {
    const std::optional<KeyPath> path = keyPathOf(key.keyPath, error);
    if (!path) return false;
    const SqlOperand operand = operands.keyPath(scope, path->steps, path->isCount);
    if (operand.kind == SqlOperand::Kind::kObject)
        error = localizedUtf8("%@ has no order", {textFromUtf8(operand.description)});
    if (!error.empty()) return false;
    if (operand.text == "NULL") return true;
    orderBy += operand.text;
    if (key.comparison == SortDescriptor::Comparison::kLocalizedCaseInsensitive) {
        orderBy.append(" COLLATE ").append(kLocalizedCollation);
    }
    orderBy += key.ascending ? ", " : " DESC, ";
    return true;
}

bool addPrefetching(const std::string& keyPath, SqlScope& scope, std::string& error) {
    const std::optional<KeyPath> path = keyPathOf(keyPath, error);
    return path && scope.rowAt(path->steps, error);
}

}  // namespace

std::optional<SqlQuery> sqlQueryForRequest(const FetchRequest& request, const ManagedObjectModel& model,
                                           const HasColumn& hasColumn, std::string& error) {
    error.clear();
    const EntityDescription* entity = model.entity(request.entityName);
    if (!entity) {
        error = localizedUtf8("the model has no entity \"%@\"", {textFromUtf8(request.entityName)});
        return std::nullopt;
    }
    SqlQuery query;
    const SqlColumns columns(model, hasColumn);
    SqlScope scope(columns, {entity, "t0"}, "t");
    const PredicateNodePointer condition = request.predicate ? request.predicate->root() : constantNode(true);
    if (!writeCondition(condition, columns, scope, query, error)) return std::nullopt;
    SqlOperands operands(columns, query, error);
    for (const SortDescriptor& key : request.sortDescriptors) {
        if (!addSortKey(key, operands, scope, query.orderBy, error)) return std::nullopt;
    }
    query.orderBy += "t0.Z_PK";
    for (const std::string& keyPath : request.relationshipKeyPathsForPrefetching) {
        if (!addPrefetching(keyPath, scope, error)) return std::nullopt;
    }
    if (scope.joinedPaths().size() > kMaxJoinedTables) {
        error = localizedUtf8("the request joins too many tables");
        return std::nullopt;
    }
    query.joins = scope.joins();
    query.joinedPaths = scope.joinedPaths();
    return query;
}

}  // namespace corvane
