#include "platform/store/StoreTables.h"

#include <algorithm>
#include <tuple>

namespace corvane {

namespace {

// Columns stand in groups: whole numbers, to-one relationships, dates and reals together, texts, bytes.
int groupOf(PropertyKind kind) {
    switch (kind) {
        case PropertyKind::kBoolean:
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
            return 0;
        case PropertyKind::kToOne:
            return 1;
        case PropertyKind::kDouble:
        case PropertyKind::kDate:
            return 2;
        case PropertyKind::kString:
            return 3;
        case PropertyKind::kTransformable:
        case PropertyKind::kToMany:
            return 4;
    }
    return 4;
}

std::vector<PropertyIndex> columnOrder(const EntityDescription& entity) {
    std::vector<PropertyIndex> order;
    for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
        if (entity.property(i).hasColumn()) order.push_back(i);
    }
    std::ranges::sort(order, {}, [&](PropertyIndex i) {
        return std::tuple(groupOf(entity.property(i).kind), entity.property(i).name);
    });
    return order;
}

std::string tableStatement(const EntityDescription& entity) {
    std::string text =
        "CREATE TABLE " + entity.table() + " ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER";
    for (const PropertyIndex i : columnOrder(entity)) {
        text += ", " + entity.column(i) + " ";
        text += declaredType(entity.property(i).kind);
    }
    return text + " )";
}

std::string relationshipIndexStatement(const EntityDescription& entity, PropertyIndex toOne) {
    const std::string& column = entity.column(toOne);
    return "CREATE INDEX " + entity.table() + "_" + column + "_INDEX ON " + entity.table() + " (" + column +
           ")";
}

std::string declaredIndexStatement(const EntityDescription& entity, const IndexDescription& index) {
    std::string columns;
    for (const std::string_view property : index.properties) {
        if (!columns.empty()) columns += ", ";
        columns += entity.column(entity.indexOfProperty(property).value()) + " COLLATE BINARY ASC";
    }
    std::string text = "CREATE INDEX Z_" + std::string(entity.name()) + "_" + std::string(index.name) +
                       " ON " + entity.table() + " (" + columns + ")";
    if (!index.where.empty()) text += " WHERE " + std::string(index.where);
    return text;
}

}  // namespace

std::string_view declaredType(PropertyKind kind) {
    switch (kind) {
        case PropertyKind::kBoolean:
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
        case PropertyKind::kToOne:
            return "INTEGER";
        case PropertyKind::kDouble:
            return "FLOAT";
        case PropertyKind::kDate:
            return "TIMESTAMP";
        case PropertyKind::kString:
            return "VARCHAR";
        case PropertyKind::kTransformable:
        case PropertyKind::kToMany:
            return "BLOB";
    }
    return "BLOB";
}

bool defaultsToZero(PropertyKind kind) { return groupOf(kind) == 0 || kind == PropertyKind::kDouble; }

std::vector<std::string> statementsForNewTables(const ManagedObjectModel& model) {
    std::vector<std::string> statements;
    for (const EntityDescription& entity : model.entities()) {
        statements.push_back(tableStatement(entity));
        for (const PropertyIndex i : columnOrder(entity)) {
            if (entity.property(i).kind != PropertyKind::kToOne) continue;
            statements.push_back(relationshipIndexStatement(entity, i));
        }
        for (const IndexDescription& index : entity.indexes()) {
            statements.push_back(declaredIndexStatement(entity, index));
        }
    }
    statements.emplace_back(
        "CREATE TABLE Z_PRIMARYKEY (Z_ENT INTEGER PRIMARY KEY, Z_NAME VARCHAR, Z_SUPER INTEGER, Z_MAX "
        "INTEGER)");
    statements.emplace_back(
        "CREATE TABLE Z_METADATA (Z_VERSION INTEGER PRIMARY KEY, Z_UUID VARCHAR(255), Z_PLIST BLOB)");
    statements.emplace_back("CREATE TABLE Z_MODELCACHE (Z_CONTENT BLOB)");
    return statements;
}

}  // namespace corvane
