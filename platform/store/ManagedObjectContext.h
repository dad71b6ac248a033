// A context: the identity map over a store, and the unsaved changes on top of it.
//
// Everything runs on one thread. Fetches see unsaved changes. Saving merges property by property with what
// other processes wrote meanwhile; what could not be saved stays pending.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/store/FetchRequest.h"
#include "platform/store/ManagedObject.h"
#include "platform/store/StoreError.h"

namespace corvane {

class ContextState;
class PersistentStoreCoordinator;

/// Posted (object: the context) once after a group of changes, before the next fetch or save or on the next
/// turn of the main queue, whichever comes first. userInfo: ObjectChanges.
inline constexpr std::string_view kObjectsDidChangeNotification = "ManagedObjectContextObjectsDidChange";
/// Posted (object: the context) after a save that wrote something. userInfo: ObjectChanges.
inline constexpr std::string_view kDidSaveNotification = "ManagedObjectContextDidSave";

/// An entry of a notification: an object, or the identifier alone.
using ChangedObject = std::variant<ManagedObject*, ManagedObjectID>;

struct ObjectChanges {
    std::vector<ChangedObject> inserted;
    std::vector<ChangedObject> updated;
    std::vector<ChangedObject> deleted;
};

class ManagedObjectContext {
  public:
    explicit ManagedObjectContext(PersistentStoreCoordinator& coordinator);
    ~ManagedObjectContext();
    ManagedObjectContext(const ManagedObjectContext&) = delete;
    ManagedObjectContext& operator=(const ManagedObjectContext&) = delete;

    PersistentStoreCoordinator& coordinator() const;

    // Objects
    /// @throws std::invalid_argument for an entity that the model does not have
    ManagedObject& insertNewObject(std::string_view entityName);
    template <class Object>
    Object& insert() {
        return static_cast<Object&>(insertNewObject(Object::kEntityName));
    }
    /// Deletes by the relationships' delete rules; the row goes with the next save, an object that was never
    /// saved is simply forgotten.
    void deleteObject(ManagedObject& object);
    /// The registered object, else a fault for it; no look into the file. Null for a temporary identifier
    /// that this context does not know.
    ManagedObject* objectWithID(const ManagedObjectID& objectID);
    /// As above, but null when the store has no such row or the object is deleted.
    ManagedObject* existingObjectWithID(const ManagedObjectID& objectID);
    /// "x-coredata://..." of an object of this context.
    std::string uriRepresentation(const ManagedObject& object) const;
    /// The object of a URI, by the same rules as existingObjectWithID.
    ManagedObject* objectWithUri(std::string_view uri);

    // Fetching
    using FetchResult = std::variant<std::vector<ManagedObject*>, StoreError>;
    [[nodiscard]] FetchResult executeFetch(const FetchRequest& request);
    /// How many objects the request finds, without building them.
    [[nodiscard]] std::variant<std::size_t, StoreError> countForFetch(const FetchRequest& request);
    /// The objects of a fetch; a failed one is an empty result.
    template <class Object>
    std::vector<Object*> fetch(FetchRequest request) {
        request.entityName = Object::kEntityName;
        const FetchResult result = executeFetch(request);
        const auto* found = std::get_if<std::vector<ManagedObject*>>(&result);
        std::vector<Object*> objects;
        if (!found) return objects;
        objects.reserve(found->size());
        for (ManagedObject* object : *found) objects.push_back(static_cast<Object*>(object));
        return objects;
    }

    // Changes
    bool hasChanges() const;
    std::vector<ManagedObject*> insertedObjects() const;
    std::vector<ManagedObject*> updatedObjects() const;
    std::vector<ManagedObject*> deletedObjects() const;
    void processPendingChanges();

    /// Writes all changes in one transaction. @return none when done or nothing was to do; on an error
    /// nothing was written and all changes stay pending
    [[nodiscard]] std::optional<StoreError> save();
    /// Gives up all unsaved changes. Objects that were not saved yet are gone.
    void rollback();

    /// Takes over what another context of the same store saved: updated objects lose their unchanged values
    /// and read afresh, deleted ones are gone, inserted ones are known.
    void mergeChangesFromContextDidSave(const ObjectChanges& changes);

    /// How many SQL statements were run for this context to read rows, and by its saves.
    std::size_t statementCount() const;

  private:
    std::unique_ptr<ContextState> state_;
};

}  // namespace corvane
