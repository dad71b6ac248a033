#include "platform/store/Relationships.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

// The object of this context that stands for `value`.
ManagedObject* counterpart(ContextState* context, const EntityDescription& destination,
                           ManagedObject* value) {
    if (!value || &value->entity() != &destination) return nullptr;
    const ObjectState& state = ObjectState::of(*value);
    if (state.isDeleted()) return nullptr;
    if (state.context == context) return value;
    return context && state.isPersistent() ? &context->objectWithKey(destination, state.key) : nullptr;
}

// The names under which observers hear of a change of a relationship, at all of its ends.
struct RelationshipNotice {
    ManagedObject& object;
    ManagedObject* from;
    ManagedObject* to;
    const PropertyDescription& property;

    void willChange() const {
        object.willChangeValueForKey(property.name);
        if (from) from->willChangeValueForKey(property.inverse);
        if (to) to->willChangeValueForKey(property.inverse);
    }
    void didChange() const {
        object.didChangeValueForKey(property.name);
        if (from) from->didChangeValueForKey(property.inverse);
        if (to) to->didChangeValueForKey(property.inverse);
    }
};

Slot slotOfObject(ManagedObject* object) { return object ? Slot(object) : Slot(); }

ManagedObject* registeredObject(ContextState& context, const EntityDescription& entity, const Slot& slot) {
    if (const auto* object = std::get_if<ManagedObject*>(&slot)) return *object;
    if (const auto* key = std::get_if<std::int64_t>(&slot)) return context.registered(entity, *key);
    return nullptr;
}

}  // namespace

ManagedObject* relatedObject(const ManagedObject& object, PropertyIndex toOne) {
    ObjectState& state = ObjectState::of(object);
    if (!state.slots) return nullptr;
    Slot& slot = state.slots[toOne];
    if (const auto* known = std::get_if<ManagedObject*>(&slot)) return *known;
    const auto* key = std::get_if<std::int64_t>(&slot);
    if (!key || !state.context) return nullptr;
    ManagedObject& found = state.context->objectWithKey(state.entity->destination(toOne), *key);
    ObjectState& foundState = ObjectState::of(found);
    if (!foundState.isLoaded) foundState.referrer = &object;
    slot = &found;
    return &found;
}

void setRelatedObject(ManagedObject& object, PropertyIndex toOne, ManagedObject* value) {
    ObjectState& state = ObjectState::of(object);
    if (state.isDeleted()) return;
    object.willAccess();
    if (!state.context) {
        state.replace(toOne, slotOfObject(value));
        return;
    }
    const EntityDescription& destination = state.entity->destination(toOne);
    ManagedObject* const from = relatedObject(object, toOne);
    ManagedObject* const to = counterpart(state.context, destination, value);
    if (to == from) return;

    const RelationshipNotice notice{object, from, to, state.entity->property(toOne)};
    notice.willChange();
    const PropertyIndex inverse = state.entity->inverse(toOne);
    if (from) removeMember(*from, inverse, object);
    state.replace(toOne, slotOfObject(to));
    if (to) addMember(*to, inverse, object);
    state.context->noteChange(object);
    if (!state.hasPropertyChanges()) state.context->noteUnchanged(object);
    notice.didChange();
}

MemberList* memberListOf(const ObjectState& owner, PropertyIndex toMany) {
    if (!owner.slots) return nullptr;
    const auto* list = std::get_if<std::unique_ptr<MemberList>>(&owner.slots[toMany]);
    return list ? list->get() : nullptr;
}

bool hasLoadedMembers(const ObjectState& owner, PropertyIndex toMany) {
    if (owner.isTemporary) return true;
    const MemberList* list = memberListOf(owner, toMany);
    return list && list->epoch == owner.context->relation(*owner.entity, toMany).epoch;
}

void addMember(ManagedObject& owner, PropertyIndex toMany, ManagedObject& member) {
    Slot& slot = ObjectState::of(owner).ensureSlots()[toMany];
    auto* list = std::get_if<std::unique_ptr<MemberList>>(&slot);
    if (!list) list = &slot.emplace<std::unique_ptr<MemberList>>(std::make_unique<MemberList>());
    std::vector<ManagedObject*>& objects = (*list)->objects;
    const auto place = std::ranges::lower_bound(objects, &member, isMemberBefore);
    if (place == objects.end() || *place != &member) objects.insert(place, &member);
}

void removeMember(ManagedObject& owner, PropertyIndex toMany, ManagedObject& member) {
    MemberList* list = memberListOf(ObjectState::of(owner), toMany);
    if (!list) return;
    const auto place = std::ranges::lower_bound(list->objects, &member, isMemberBefore);
    if (place != list->objects.end() && *place == &member) list->objects.erase(place);
}

bool isMemberBefore(const ManagedObject* a, const ManagedObject* b) {
    const ObjectState& stateA = ObjectState::of(*a);
    const ObjectState& stateB = ObjectState::of(*b);
    return std::pair(stateA.isTemporary, stateA.key) < std::pair(stateB.isTemporary, stateB.key);
}

void moveMember(ManagedObject& object, PropertyIndex toOne, const Slot& from, const Slot& to) {
    const ObjectState& state = ObjectState::of(object);
    const EntityDescription& destination = state.entity->destination(toOne);
    const PropertyIndex inverse = state.entity->inverse(toOne);
    if (!state.context->relation(destination, inverse).hasLoadedMembers) return;
    if (ManagedObject* owner = registeredObject(*state.context, destination, from)) {
        removeMember(*owner, inverse, object);
    }
    ManagedObject* owner = registeredObject(*state.context, destination, to);
    if (owner && hasLoadedMembers(ObjectState::of(*owner), inverse)) addMember(*owner, inverse, object);
}

}  // namespace corvane
