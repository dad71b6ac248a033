#include "platform/store/UnsavedChanges.h"

#include <algorithm>

#include "platform/store/RelationshipLoading.h"
#include "platform/store/Relationships.h"

namespace corvane {

namespace {

void keepDistinct(std::vector<ManagedObject*>& objects) {
    std::ranges::sort(objects);
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
}

void append(std::vector<ManagedObject*>& objects, const std::vector<ManagedObject*>& more) {
    objects.insert(objects.end(), more.begin(), more.end());
}

bool hasUsedChange(const ManagedObject& object, const UsedProperties& used) {
    return std::ranges::any_of(*ObjectState::of(object).changes,
                               [&](const ChangedProperty& change) { return used.used[change.property]; });
}

// With the values that the file has by now: others may have moved them to another owner.
std::vector<ManagedObject*> changedObjects(ContextState& context, const UsedProperties& used) {
    const EntityState& entity = context.entityState(*used.entity);
    std::vector<ManagedObject*> objects = entity.updated.toVector();
    std::erase_if(objects, [&](const ManagedObject* object) { return !hasUsedChange(*object, used); });
    append(objects, entity.deleted.toVector());
    loadFresh(context, objects);
    append(objects, entity.inserted.toVector());
    return objects;
}

// Whoever refers to one of these objects. Who refers to an unsaved one has a change of its own.
std::vector<ManagedObject*> objectsReferringTo(ContextState& context, const UsedProperties& used,
                                               PropertyIndex toOne, std::vector<ManagedObject*> related) {
    std::erase_if(related, [](const ManagedObject* object) { return object->isInserted(); });
    const PropertyIndex inverse = used.entity->inverse(toOne);
    loadMembersOf(context, related, inverse);
    std::vector<ManagedObject*> objects;
    for (const ManagedObject* object : related) {
        const MemberList* members = memberListOf(ObjectState::of(*object), inverse);
        if (members) append(objects, members->objects);
    }
    return objects;
}

ManagedObject* objectOf(ContextState& context, const EntityDescription& entity, const Slot& slot) {
    if (const auto* object = std::get_if<ManagedObject*>(&slot)) return *object;
    const auto* key = std::get_if<std::int64_t>(&slot);
    return key ? &context.objectWithKey(entity, *key) : nullptr;
}

// The owners to which these members belong, or belonged in the file.
std::vector<ManagedObject*> ownersOf(ContextState& context, const UsedProperties& used, PropertyIndex toMany,
                                     const std::vector<ManagedObject*>& members) {
    const PropertyIndex toOne = used.entity->inverse(toMany);
    std::vector<ManagedObject*> owners;
    for (const ManagedObject* member : members) {
        const ObjectState& state = ObjectState::of(*member);
        if (ManagedObject* owner = relatedObject(*member, toOne)) owners.push_back(owner);
        const ChangedProperty* change = state.changeOf(toOne);
        ManagedObject* before = change ? objectOf(context, *used.entity, change->original) : nullptr;
        if (before) owners.push_back(before);
    }
    std::erase_if(owners, [](const ManagedObject* owner) { return ObjectState::of(*owner).isGone; });
    return owners;
}

}  // namespace

bool hasUnsavedChanges(ContextState& context, const UsedProperties& used) {
    return context.entityState(*used.entity).hasChanges() ||
           std::ranges::any_of(used.related,
                               [&](const auto& entry) { return hasUnsavedChanges(context, entry.second); });
}

std::vector<ManagedObject*> affectedObjects(ContextState& context, const UsedProperties& used) {
    std::vector<ManagedObject*> objects = changedObjects(context, used);
    for (const auto& [relationship, child] : used.related) {
        const std::vector<ManagedObject*> related = affectedObjects(context, child);
        if (related.empty()) continue;
        const bool isToOne = used.entity->property(relationship).kind == PropertyKind::kToOne;
        append(objects, isToOne ? objectsReferringTo(context, used, relationship, related)
                                : ownersOf(context, used, relationship, related));
    }
    keepDistinct(objects);
    return objects;
}

void loadForJudging(ContextState& context, const UsedProperties& used,
                    std::span<ManagedObject* const> objects) {
    if (objects.empty() || !used.readsValues()) return;
    loadFresh(context, objects);
    for (const auto& [relationship, child] : used.related) {
        std::vector<ManagedObject*> related;
        if (used.entity->property(relationship).kind == PropertyKind::kToOne) {
            for (const ManagedObject* object : objects) {
                if (ManagedObject* other = relatedObject(*object, relationship)) related.push_back(other);
            }
        } else {
            loadMembersOf(context, objects, relationship);
            for (const ManagedObject* object : objects) append(related, object->membersAt(relationship));
        }
        keepDistinct(related);
        loadForJudging(context, child, related);
    }
}

}  // namespace corvane
