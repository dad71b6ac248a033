// Taking over what another context has saved.
#include <variant>

#include "platform/store/ContextState.h"
#include "platform/store/Deletion.h"
#include "platform/store/ManagedObjectContext.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/RowLoading.h"

namespace corvane {

namespace {

ManagedObjectID identifierOf(const ChangedObject& entry) {
    if (const auto* object = std::get_if<ManagedObject*>(&entry)) {
        return *object ? (*object)->objectID() : ManagedObjectID();
    }
    return std::get<ManagedObjectID>(entry);
}

class Merge {
  public:
    explicit Merge(ContextState& context) : context_(context) {}

    void insert(const ChangedObject& entry) {
        const ManagedObjectID id = knownIdentifier(entry);
        if (!id.entity) return;
        context_.forgetMembers(*id.entity);
        const bool isNew = context_.registered(*id.entity, id.key) == nullptr;
        ManagedObject& object = context_.objectWithKey(*id.entity, id.key);
        if (isNew) context_.notices.noteInsertion(object);
    }

    void update(const ChangedObject& entry) {
        const ManagedObjectID id = knownIdentifier(entry);
        if (!id.entity) return;
        context_.forgetMembers(*id.entity);
        ManagedObject* object = context_.registered(*id.entity, id.key);
        if (!object || object->isDeleted()) return;
        turnIntoFault(*object);
        context_.notices.noteUpdate(*object);
    }

    void remove(const ChangedObject& entry) {
        const ManagedObjectID id = knownIdentifier(entry);
        if (!id.entity) return;
        context_.forgetMembers(*id.entity);
        ManagedObject* object = context_.registered(*id.entity, id.key);
        if (object) forgetDeletedElsewhere(context_, *object);
    }

  private:
    // Without an entity when it names no row that this context can have: a temporary identifier, another
    // model, or this context's own object.
    ManagedObjectID knownIdentifier(const ChangedObject& entry) const {
        const auto* object = std::get_if<ManagedObject*>(&entry);
        const bool isOwn = object && *object && (*object)->managedObjectContext() == &context_.context;
        const ManagedObjectID id = identifierOf(entry);
        const bool isKnown = id.entity && context_.coordinator.model().entity(id.entity->name()) == id.entity;
        return isKnown && !isOwn && !id.isTemporary ? id : ManagedObjectID();
    }

    ContextState& context_;
};

}  // namespace

void ManagedObjectContext::mergeChangesFromContextDidSave(const ObjectChanges& changes) {
    Merge merge(*state_);
    for (const ChangedObject& entry : changes.inserted) merge.insert(entry);
    for (const ChangedObject& entry : changes.updated) merge.update(entry);
    for (const ChangedObject& entry : changes.deleted) merge.remove(entry);
    processPendingChanges();
}

}  // namespace corvane
