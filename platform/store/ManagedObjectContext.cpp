#include "platform/store/ManagedObjectContext.h"

#include <stdexcept>
#include <string>

#include "platform/foundation/NotificationCenter.h"
#include "platform/store/ContextState.h"
#include "platform/store/Deletion.h"
#include "platform/store/FetchExecution.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/RowLoading.h"
#include "platform/store/SaveExecution.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

namespace {

void restore(ObjectState& state) {
    if (!state.changes) return;
    for (ChangedProperty& change : *state.changes) state.slots[change.property] = std::move(change.original);
    state.changes.reset();
    if (state.isMissing) state.resetValues();
    state.tellOfFreshValues();
}

}  // namespace

ManagedObjectContext::ManagedObjectContext(PersistentStoreCoordinator& coordinator)
    : state_(std::make_unique<ContextState>(*this, coordinator)) {}

ManagedObjectContext::~ManagedObjectContext() { NotificationCenter::defaultCenter().removeObserversOf(this); }

PersistentStoreCoordinator& ManagedObjectContext::coordinator() const { return state_->coordinator; }

ManagedObject& ManagedObjectContext::insertNewObject(std::string_view entityName) {
    const EntityDescription* entity = coordinator().model().entity(entityName);
    if (!entity) throw std::invalid_argument("there is no entity " + std::string(entityName));
    return state_->insert(*entity);
}

void ManagedObjectContext::deleteObject(ManagedObject& object) { deleteByRules(*state_, object); }

ManagedObject* ManagedObjectContext::objectWithID(const ManagedObjectID& objectID) {
    if (!objectID.entity || coordinator().model().entity(objectID.entity->name()) != objectID.entity) {
        return nullptr;
    }
    if (!objectID.isTemporary) return &state_->objectWithKey(*objectID.entity, objectID.key);
    ManagedObject* object = state_->objectWithToken(*objectID.entity, objectID.key);
    return object && object->managedObjectContext() ? object : nullptr;
}

ManagedObject* ManagedObjectContext::existingObjectWithID(const ManagedObjectID& objectID) {
    ManagedObject* object = objectWithID(objectID);
    if (!object) return nullptr;
    ObjectState& state = ObjectState::of(*object);
    // Asked by name, the file is asked again.
    state.isMissing = state.isMissing && state.hasPropertyChanges();
    object->willAccess();
    return state.isLoaded && state.isThere() ? object : nullptr;
}

std::string ManagedObjectContext::uriRepresentation(const ManagedObject& object) const {
    const SqliteStore* store = coordinator().store();
    return corvane::uriRepresentation(object.objectID(), store ? store->uuid() : std::string());
}

ManagedObject* ManagedObjectContext::objectWithUri(std::string_view uri) {
    const SqliteStore* store = coordinator().store();
    if (!store) return nullptr;
    const auto objectID = objectIDFromUri(uri, store->uuid(), coordinator().model());
    return objectID ? existingObjectWithID(*objectID) : nullptr;
}

ManagedObjectContext::FetchResult ManagedObjectContext::executeFetch(const FetchRequest& request) {
    processPendingChanges();
    return FetchExecution(*state_, request).run();
}

std::variant<std::size_t, StoreError> ManagedObjectContext::countForFetch(const FetchRequest& request) {
    processPendingChanges();
    return FetchExecution(*state_, request).count();
}

bool ManagedObjectContext::hasChanges() const { return state_->hasChanges(); }

std::vector<ManagedObject*> ManagedObjectContext::insertedObjects() const {
    return state_->pending(&EntityState::inserted);
}

std::vector<ManagedObject*> ManagedObjectContext::updatedObjects() const {
    return state_->pending(&EntityState::updated);
}

std::vector<ManagedObject*> ManagedObjectContext::deletedObjects() const {
    return state_->pending(&EntityState::deleted);
}

void ManagedObjectContext::processPendingChanges() { state_->notices.post(); }

std::optional<StoreError> ManagedObjectContext::save() {
    processPendingChanges();
    return SaveExecution(*state_).run();
}

void ManagedObjectContext::rollback() {
    for (ManagedObject* object : insertedObjects()) state_->noteDeletion(*object);
    for (ManagedObject* object : updatedObjects()) {
        restore(ObjectState::of(*object));
        state_->noteUnchanged(*object);
        state_->notices.noteUpdate(*object);
    }
    for (ManagedObject* object : deletedObjects()) {
        restore(ObjectState::of(*object));
        state_->noteUndeleted(*object);
    }
    state_->forgetAllMembers();
}

std::size_t ManagedObjectContext::statementCount() const { return state_->statementCount; }

}  // namespace corvane
