#include "platform/store/ObjectState.h"

#include <algorithm>
#include <utility>

#include "platform/store/ManagedObject.h"

namespace corvane {

ChangedProperty* ObjectState::changeOf(PropertyIndex property) const {
    if (!changes) return nullptr;
    const auto found = std::ranges::find(*changes, property, &ChangedProperty::property);
    return found != changes->end() ? &*found : nullptr;
}

Slot* ObjectState::ensureSlots() {
    if (!slots) {
        const auto properties = entity->properties();
        slots = std::make_unique<Slot[]>(properties.size());
        for (PropertyIndex i = 0; i < properties.size(); ++i) slots[i] = defaultSlot(properties[i].kind);
    }
    return slots.get();
}

void ObjectState::replace(PropertyIndex property, Slot value) {
    Slot& slot = ensureSlots()[property];
    if (!isPersistent()) {
        slot = std::move(value);
        return;
    }
    ChangedProperty* change = changeOf(property);
    if (change && isSameValue(change->original, value)) {
        slot = std::move(change->original);
        changes->erase(changes->begin() + (change - changes->data()));
        return;
    }
    if (!change) {
        if (!changes) changes = std::make_unique<std::vector<ChangedProperty>>();
        changes->push_back({property, std::move(slot)});
    }
    slot = std::move(value);
}

Slot& ObjectState::storedSlot(PropertyIndex property) {
    ChangedProperty* change = changeOf(property);
    return change ? change->original : slots[property];
}

void ObjectState::dropChangesThatTheRowHas() {
    if (!changes) return;
    std::erase_if(*changes, [&](const ChangedProperty& change) {
        return isSameValue(change.original, slots[change.property]);
    });
}

void ObjectState::resetValues() {
    if (!slots) return;
    const auto properties = entity->properties();
    for (PropertyIndex i = 0; i < properties.size(); ++i) {
        if (properties[i].hasColumn()) slots[i] = defaultSlot(properties[i].kind);
    }
}

void ObjectState::tellOfFreshValues() { object.didTurnIntoFault(); }

void ObjectState::leaveContext() {
    context = nullptr;
    pending = Pending::kNone;
    changes.reset();
    group.reset();
    referrer = nullptr;
    isLoaded = true;
    isGone = true;
}

}  // namespace corvane
