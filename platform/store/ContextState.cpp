#include "platform/store/ContextState.h"

#include <algorithm>

#include "platform/foundation/Localization.h"
#include "platform/store/ManagedObjectContext.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

namespace {

// Tokens are unique in the process, so that one context never takes another's temporary identifier for its
// own.
std::int64_t nextToken() {
    static std::int64_t last = 0;
    return ++last;
}

}  // namespace

void ObjectSequence::add(ManagedObject& object) {
    ObjectState::of(object).pendingPosition = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back(&object);
    ++count_;
}

void ObjectSequence::remove(ManagedObject& object) {
    entries_[ObjectState::of(object).pendingPosition] = nullptr;
    --count_;
    if (entries_.size() > 2 * count_ + 16) closeGaps();
}

void ObjectSequence::clear() {
    entries_.clear();
    count_ = 0;
}

std::vector<ManagedObject*> ObjectSequence::toVector() const {
    std::vector<ManagedObject*> objects;
    objects.reserve(count_);
    std::ranges::copy_if(entries_, std::back_inserter(objects), [](ManagedObject* object) { return object; });
    return objects;
}

void ObjectSequence::closeGaps() {
    std::erase(entries_, nullptr);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        ObjectState::of(*entries_[i]).pendingPosition = static_cast<std::uint32_t>(i);
    }
}

ContextState::ContextState(ManagedObjectContext& owner, PersistentStoreCoordinator& itsCoordinator)
    : context(owner), coordinator(itsCoordinator), notices(owner) {
    for (const EntityDescription& entity : coordinator.model().entities()) {
        EntityState& state = entities.emplace_back();
        state.entity = &entity;
        state.relations.resize(entity.properties().size());
    }
}

ManagedObject* ContextState::registered(const EntityDescription& entity, std::int64_t key) {
    const auto& objects = entityState(entity).objects;
    const auto found = objects.find(key);
    return found != objects.end() ? found->second : nullptr;
}

ManagedObject& ContextState::objectWithKey(const EntityDescription& entity, std::int64_t key) {
    ManagedObject*& entry = entityState(entity).objects[key];
    if (entry) return *entry;
    ManagedObject& object = own(entity.makeObject());
    ObjectState& state = ObjectState::of(object);
    state.key = key;
    state.isLoaded = false;
    entry = &object;
    return object;
}

ManagedObject* ContextState::objectWithToken(const EntityDescription& entity, std::int64_t token) const {
    const auto found = std::ranges::lower_bound(byToken_, token, {}, [](const auto& e) { return e.first; });
    if (found == byToken_.end() || found->first != token) return nullptr;
    return &found->second->entity() == &entity ? found->second : nullptr;
}

ManagedObject& ContextState::insert(const EntityDescription& entity) {
    ManagedObject& object = own(entity.makeObject());
    ObjectState& state = ObjectState::of(object);
    state.key = nextToken();
    state.isTemporary = true;
    state.pending = ObjectState::Pending::kInserted;
    state.ensureSlots();
    byToken_.emplace_back(state.key, &object);
    entityState(entity).inserted.add(object);
    notices.noteInsertion(object);
    return object;
}

void ContextState::makePermanent(ManagedObject& object, std::int64_t key) {
    ObjectState& state = ObjectState::of(object);
    // A foreign key without a row may have asked for this number before there was a row of that number.
    if (ManagedObject* placeholder = registered(*state.entity, key)) forget(*placeholder);
    leavePending(state);
    state.key = key;
    state.isTemporary = false;
    entityState(*state.entity).objects[key] = &object;
}

void ContextState::forget(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    auto& objects = entityState(*state.entity).objects;
    const auto found = state.isTemporary ? objects.end() : objects.find(state.key);
    if (found != objects.end() && found->second == &object) objects.erase(found);
    state.leaveContext();
}

void ContextState::forgetMembers(const EntityDescription& destination) {
    for (PropertyIndex i = 0; i < destination.properties().size(); ++i) {
        if (destination.property(i).kind != PropertyKind::kToOne) continue;
        RelationState& state = relation(destination.destination(i), destination.inverse(i));
        ++state.epoch;
        state.hasLoadedMembers = false;
    }
}

void ContextState::forgetAllMembers() {
    for (const EntityState& state : entities) forgetMembers(*state.entity);
}

bool ContextState::hasChanges() const { return std::ranges::any_of(entities, &EntityState::hasChanges); }

void ContextState::noteChange(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    if (state.pending == ObjectState::Pending::kNone) {
        state.pending = ObjectState::Pending::kUpdated;
        entityState(*state.entity).updated.add(object);
    }
    notices.noteUpdate(object);
}

void ContextState::noteUnchanged(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    if (state.pending == ObjectState::Pending::kUpdated) leavePending(state);
}

void ContextState::noteDeletion(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    notices.noteDeletion(object);
    const bool wasSaved = state.pending != ObjectState::Pending::kInserted;
    leavePending(state);
    if (!wasSaved) return forget(object);
    state.pending = ObjectState::Pending::kDeleted;
    entityState(*state.entity).deleted.add(object);
}

void ContextState::noteUndeleted(ManagedObject& object) {
    leavePending(ObjectState::of(object));
    notices.noteInsertion(object);
}

void ContextState::noteSavedDeletion(ManagedObject& object) {
    leavePending(ObjectState::of(object));
    forget(object);
}

void ContextState::noteGone(ManagedObject& object) {
    notices.noteDeletion(object);
    leavePending(ObjectState::of(object));
    forget(object);
}

void ContextState::leavePending(ObjectState& state) {
    EntityState& entity = entityState(*state.entity);
    switch (std::exchange(state.pending, ObjectState::Pending::kNone)) {
        case ObjectState::Pending::kNone:
            return;
        case ObjectState::Pending::kInserted:
            return entity.inserted.remove(state.object);
        case ObjectState::Pending::kUpdated:
            return entity.updated.remove(state.object);
        case ObjectState::Pending::kDeleted:
            return entity.deleted.remove(state.object);
    }
}

std::vector<ManagedObject*> ContextState::pending(ObjectSequence EntityState::*sequence) const {
    std::vector<ManagedObject*> objects;
    for (const EntityState& entity : entities) {
        const std::vector<ManagedObject*> some = (entity.*sequence).toVector();
        objects.insert(objects.end(), some.begin(), some.end());
    }
    return objects;
}

SqliteStore* ContextState::store() const { return coordinator.store(); }

std::variant<SqliteStatement, StoreError> ContextState::prepare(std::string_view sql) {
    if (!store()) return StoreError{StoreError::Kind::kCannotOpen, localizedUtf8("no store is loaded")};
    ++statementCount;
    return store()->prepare(sql);
}

void ContextState::updateReadVersion() {
    if (!store()) return;
    const std::pair commit{store()->dataVersion(), coordinator.saveCount()};
    if (commit == lastCommit_) return;
    lastCommit_ = commit;
    ++readVersion;
    forgetAllMembers();
}

void ContextState::noteOwnSave() {
    coordinator.noteSave();
    lastCommit_.second = coordinator.saveCount();
}

ManagedObject& ContextState::own(std::unique_ptr<ManagedObject> object) {
    ObjectState::of(*object).context = this;
    return *owned_.emplace_back(std::move(object));
}

}  // namespace corvane
