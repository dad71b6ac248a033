#include "platform/store/ManagedObject.h"

#include <algorithm>
#include <utility>

#include "platform/store/ContextState.h"
#include "platform/store/RelationshipLoading.h"
#include "platform/store/Relationships.h"
#include "platform/store/RowLoading.h"

namespace corvane {

ManagedObject::ManagedObject(const EntityDescription& entity) : state_(*this, entity) {}

ManagedObject::~ManagedObject() = default;

const EntityDescription& ManagedObject::entity() const { return *state_.entity; }

ManagedObjectContext* ManagedObject::managedObjectContext() const {
    return state_.context ? &state_.context->context : nullptr;
}

ManagedObjectID ManagedObject::objectID() const { return {state_.entity, state_.key, state_.isTemporary}; }

bool ManagedObject::isInserted() const { return state_.pending == ObjectState::Pending::kInserted; }

bool ManagedObject::isUpdated() const { return state_.pending == ObjectState::Pending::kUpdated; }

bool ManagedObject::isDeleted() const { return state_.isDeleted(); }

bool ManagedObject::isFault() const {
    return !state_.isLoaded && !state_.isMissing && !state_.hasPropertyChanges();
}

bool ManagedObject::hasChanges() const { return state_.pending != ObjectState::Pending::kNone; }

std::vector<std::string_view> ManagedObject::changedKeys() const {
    std::vector<std::string_view> keys;
    const auto properties = state_.entity->properties();
    for (PropertyIndex i = 0; i < properties.size(); ++i) {
        const bool isSet = isInserted() && properties[i].hasColumn() &&
                           !isSameValue(state_.slots[i], defaultSlot(properties[i].kind));
        if (isSet || state_.changeOf(i)) keys.push_back(properties[i].name);
    }
    return keys;
}

void ManagedObject::willAccess() const {
    if (state_.isLoaded || state_.isMissing || !state_.context) return;
    loadFault(state_.object);
}

Value ManagedObject::valueForKey(std::string_view key) const {
    const std::optional<PropertyIndex> index = state_.entity->indexOfProperty(key);
    return index ? valueAt(*index) : Value();
}

Value ManagedObject::valueAt(PropertyIndex index) const { return valueOf(viewAt(index)); }

ValueView ManagedObject::viewAt(PropertyIndex index) const {
    const Slot& slot = slotAt(index);
    if (state_.isGone || state_.isMissing) return {};
    const PropertyKind kind = state_.entity->property(index).kind;
    // Somebody else may have put in a reference to what is deleted here: the save will clear it.
    const ManagedObject* related = kind == PropertyKind::kToOne ? relatedObject(*this, index) : nullptr;
    if (related && related->isDeleted()) return {};
    return viewOf(slot, kind);
}

const std::vector<ManagedObject*>& ManagedObject::membersAt(PropertyIndex index) const {
    static const std::vector<ManagedObject*> none;
    const bool isStored = state_.isPersistent() && state_.isThere();
    if (isStored && !hasLoadedMembers(state_, index)) loadMembers(state_.object, index);
    const MemberList* list = memberListOf(state_, index);
    return list ? list->objects : none;
}

void ManagedObject::setValueForKey(std::string_view key, const Value& value) {
    const std::optional<PropertyIndex> index = state_.entity->indexOfProperty(key);
    if (!index) return;
    const PropertyKind kind = state_.entity->property(*index).kind;
    if (kind == PropertyKind::kToOne) {
        const auto* object = std::get_if<ManagedObject*>(&value);
        if (object || isNil(value)) setObjectAt(*index, object ? *object : nullptr);
        return;
    }
    if (kind == PropertyKind::kToMany) return;
    if (std::optional<Slot> slot = slotFromValue(value, kind)) setSlotAt(*index, std::move(*slot));
}

ManagedObject::ObserverToken ManagedObject::addObserver(Observer observer) {
    if (!state_.observers) state_.observers = std::make_unique<ObjectState::Observers>();
    const ObserverToken token = ++state_.observers->lastToken;
    state_.observers->entries.emplace_back(token, std::move(observer));
    return token;
}

void ManagedObject::removeObserver(ObserverToken token) {
    if (!state_.observers) return;
    std::erase_if(state_.observers->entries, [&](const auto& entry) { return entry.first == token; });
}

void ManagedObject::willChangeValueForKey(std::string_view key) {
    constexpr bool kIsPrior = true;
    notify(key, kIsPrior);
}

void ManagedObject::didChangeValueForKey(std::string_view key) {
    constexpr bool kIsPrior = true;
    notify(key, !kIsPrior);
}

bool ManagedObject::booleanAt(PropertyIndex index) const { return booleanOf(slotAt(index)); }

std::int64_t ManagedObject::integerAt(PropertyIndex index) const {
    return integerOf(slotAt(index), state_.entity->property(index).kind);
}

double ManagedObject::doubleAt(PropertyIndex index) const { return doubleOf(slotAt(index)); }

std::optional<Date> ManagedObject::dateAt(PropertyIndex index) const { return dateOf(slotAt(index)); }

std::optional<std::u16string_view> ManagedObject::textAt(PropertyIndex index) const {
    return textOf(slotAt(index));
}

const Bytes* ManagedObject::bytesAt(PropertyIndex index) const { return bytesOf(slotAt(index)); }

ManagedObject* ManagedObject::objectAt(PropertyIndex index) const {
    willAccess();
    ManagedObject* object = relatedObject(*this, index);
    if (!object) return nullptr;
    object->willAccess();
    return object->state_.isThere() ? object : nullptr;
}

void ManagedObject::setBooleanAt(PropertyIndex index, bool value) {
    setSlotAt(index, std::int64_t{value ? 1 : 0});
}

void ManagedObject::setIntegerAt(PropertyIndex index, std::int64_t value) {
    setSlotAt(index, integerOf(value, state_.entity->property(index).kind));
}

void ManagedObject::setDoubleAt(PropertyIndex index, double value) {
    setSlotAt(index, slotFromDouble(value));
}

void ManagedObject::setDateAt(PropertyIndex index, std::optional<Date> value) {
    const bool isDate = value && dateOf(value->time_since_epoch().count());
    setSlotAt(index, isDate ? Slot(value->time_since_epoch().count()) : Slot());
}

void ManagedObject::setTextAt(PropertyIndex index, std::optional<std::u16string_view> value) {
    if (value && textOf(slotAt(index)) == value) return;
    setSlotAt(index, slotFromText(value));
}

void ManagedObject::setBytesAt(PropertyIndex index, const Bytes* value) {
    setSlotAt(index, slotFromBytes(value));
}

void ManagedObject::setObjectAt(PropertyIndex index, ManagedObject* value) {
    setRelatedObject(*this, index, value);
}

const Slot& ManagedObject::slotAt(PropertyIndex index) const {
    willAccess();
    return state_.ensureSlots()[index];
}

void ManagedObject::setSlotAt(PropertyIndex index, Slot value) {
    if (state_.isDeleted() || isSameValue(slotAt(index), value)) return;
    const std::string_view key = state_.entity->property(index).name;
    willChangeValueForKey(key);
    state_.replace(index, std::move(value));
    if (state_.context) {
        state_.context->noteChange(*this);
        if (!state_.hasPropertyChanges()) state_.context->noteUnchanged(*this);
    }
    didChangeValueForKey(key);
}

void ManagedObject::notify(std::string_view key, bool isPrior) {
    if (!state_.observers || state_.observers->entries.empty()) return;
    // A copy: an observer may add and remove observers.
    const auto entries = state_.observers->entries;
    for (const auto& [token, observer] : entries) observer(*this, key, isPrior);
}

}  // namespace corvane
