#include "platform/store/SqlScope.h"

#include <algorithm>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {

namespace {

bool hasNumberDefault(PropertyKind kind) {
    switch (kind) {
        case PropertyKind::kBoolean:
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
        case PropertyKind::kDouble:
            return true;
        case PropertyKind::kDate:
        case PropertyKind::kString:
        case PropertyKind::kTransformable:
        case PropertyKind::kToOne:
        case PropertyKind::kToMany:
            return false;
    }
    return false;
}

}  // namespace

std::string SqlColumns::text(const SqlRow& row, PropertyIndex property) const {
    const EntityDescription& entity = *row.entity;
    if (hasColumn_(entity, property)) return row.alias + "." + entity.column(property);
    if (!hasNumberDefault(entity.property(property).kind)) return "NULL";
    return "CASE WHEN " + row.alias + ".Z_PK IS NOT NULL THEN 0 END";
}

std::string SqlColumns::membership(const SqlRow& owner, PropertyIndex toMany, const SqlRow& member) const {
    return text(member, model_.inverseOf(*owner.entity, toMany)) + " = " + owner.alias + ".Z_PK";
}

std::optional<SqlRow> SqlScope::rowAt(std::span<const KeyStep> toOneSteps, std::string& error) {
    SqlRow row = root_;
    std::string keyPath;
    for (const KeyStep& step : toOneSteps) {
        const std::optional<PropertyIndex> index = propertyOfStep(*row.entity, step, error);
        if (!index) return std::nullopt;
        if (row.entity->property(*index).kind != PropertyKind::kToOne) {
            error = localizedUtf8("%1$@ of %2$@ is no to-one relationship",
                                  {textFromUtf8(step.key), textFromUtf8(row.entity->name())});
            return std::nullopt;
        }
        keyPath += keyPath.empty() ? step.key : "." + step.key;
        row = joinedRow(keyPath, row, *index);
    }
    if (!toOneSteps.empty()) ++uses_;
    return row;
}

void SqlScope::truncate(std::size_t count) {
    if (count >= joinedPaths_.size()) return;
    joins_.resize(joinStarts_[count]);
    joinStarts_.resize(count);
    joinedPaths_.resize(count);
}

SqlRow SqlScope::joinedRow(const std::string& keyPath, const SqlRow& from, PropertyIndex toOne) {
    const auto known = std::ranges::find(joinedPaths_, keyPath, &SqlQuery::JoinedPath::keyPath);
    if (known != joinedPaths_.end()) return {known->entity, known->alias};
    SqlRow row{&columns_.model().destinationOf(*from.entity, toOne),
               aliasPrefix_ + std::to_string(joinedPaths_.size() + 1)};
    joinStarts_.push_back(joins_.size());
    joins_ += " LEFT JOIN " + row.entity->table() + " " + row.alias + " ON " + row.alias +
              ".Z_PK = " + columns_.text(from, toOne);
    joinedPaths_.push_back({keyPath, row.alias, row.entity});
    return row;
}

std::optional<PropertyIndex> propertyOfStep(const EntityDescription& entity, const KeyStep& step,
                                            std::string& error) {
    const std::optional<PropertyIndex> index = step.indexIn(entity);
    if (!index)
        error = localizedUtf8("%1$@ has no property \"%2$@\"",
                              {textFromUtf8(entity.name()), textFromUtf8(step.key)});
    return index;
}

}  // namespace corvane
