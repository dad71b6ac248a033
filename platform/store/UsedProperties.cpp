#include "platform/store/UsedProperties.h"

#include <algorithm>
#include <functional>

#include "platform/store/PredicateNode.h"

namespace corvane {

namespace {

void addNode(UsedProperties& used, const PredicateNode& node);

void addExpression(UsedProperties& used, const Expression& expression) {
    if (const auto* list = expression.get<ListExpression>()) {
        for (const Expression& element : list->elements) addExpression(used, element);
    }
    const auto* path = expression.get<KeyPath>();
    if (!path) return;
    std::vector<std::string_view> keys;
    for (const KeyStep& step : path->steps) keys.push_back(step.key);
    used.add(keys);
}

void addNode(UsedProperties& used, const PredicateNode& node) {
    if (const auto* negation = node.get<Negation>()) return addNode(used, *negation->operand);
    if (const auto* compound = node.get<Compound>()) {
        for (const PredicateNodePointer& operand : compound->operands) addNode(used, *operand);
    }
    const auto* comparison = node.get<Comparison>();
    if (!comparison) return;
    addExpression(used, comparison->left);
    addExpression(used, comparison->right);
}

std::vector<std::string_view> keysOfPath(std::string_view path) {
    std::vector<std::string_view> keys;
    while (true) {
        const std::size_t dot = path.find('.');
        keys.push_back(path.substr(0, dot));
        if (dot == std::string_view::npos) return keys;
        path.remove_prefix(dot + 1);
    }
}

}  // namespace

void UsedProperties::add(std::span<const std::string_view> keys) {
    if (keys.empty()) return;
    const std::optional<PropertyIndex> index = entity->indexOfProperty(keys.front());
    if (!index) return;
    used[*index] = true;
    const PropertyDescription& property = entity->property(*index);
    if (!property.isRelationship()) return;
    UsedProperties& child = related.try_emplace(*index, entity->destination(*index)).first->second;
    // Who belongs to a to-many relationship is written at its members.
    if (property.kind == PropertyKind::kToMany) child.used[entity->inverse(*index)] = true;
    child.add(keys.subspan(1));
}

bool UsedProperties::readsValues() const { return std::ranges::any_of(used, std::identity()); }

UsedProperties usedPropertiesOf(const FetchRequest& request, const EntityDescription& entity) {
    UsedProperties used = usedPropertiesOf(request.sortDescriptors, entity);
    if (request.predicate) addNode(used, *request.predicate->root());
    return used;
}

UsedProperties usedPropertiesOf(const std::vector<SortDescriptor>& keys, const EntityDescription& entity) {
    UsedProperties used(entity);
    for (const SortDescriptor& key : keys) used.add(keysOfPath(key.keyPath));
    return used;
}

}  // namespace corvane
