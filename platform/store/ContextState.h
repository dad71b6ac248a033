// What a context knows: the registered objects of each entity and the unsaved changes among them. For the
// store's own sources.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "platform/store/ChangeNotices.h"
#include "platform/store/ManagedObject.h"
#include "platform/store/ModelDescription.h"
#include "platform/store/SqliteStatement.h"
#include "platform/store/StoreError.h"

namespace corvane {

class ManagedObjectContext;
class PersistentStoreCoordinator;
class SqliteStore;

/// Objects in the order in which they came. Each is in at most one sequence at a time.
class ObjectSequence {
  public:
    void add(ManagedObject& object);
    void remove(ManagedObject& object);
    void clear();
    bool empty() const { return count_ == 0; }
    std::size_t size() const { return count_; }
    std::vector<ManagedObject*> toVector() const;

  private:
    void closeGaps();

    std::vector<ManagedObject*> entries_;  ///< null where one was removed
    std::size_t count_ = 0;
};

/// A to-many relationship over all its owners.
struct RelationState {
    std::uint32_t epoch = 1;        ///< members loaded in an earlier one are to be read afresh
    bool hasLoadedMembers = false;  ///< false: no owner's members need to follow what rows say
};

struct EntityState {
    const EntityDescription* entity = nullptr;
    std::unordered_map<std::int64_t, ManagedObject*> objects;  ///< those with a row, by Z_PK
    ObjectSequence inserted;
    ObjectSequence updated;
    ObjectSequence deleted;
    std::vector<RelationState> relations;  ///< by property

    bool hasChanges() const { return !inserted.empty() || !updated.empty() || !deleted.empty(); }
};

class ContextState {
  public:
    ContextState(ManagedObjectContext& owner, PersistentStoreCoordinator& itsCoordinator);
    ContextState(const ContextState&) = delete;
    ContextState& operator=(const ContextState&) = delete;

    // Registered objects
    EntityState& entityState(const EntityDescription& entity) { return entities[entity.position()]; }
    RelationState& relation(const EntityDescription& entity, PropertyIndex toMany) {
        return entityState(entity).relations[toMany];
    }
    ManagedObject* registered(const EntityDescription& entity, std::int64_t key);
    /// The registered object, else a fault for it.
    ManagedObject& objectWithKey(const EntityDescription& entity, std::int64_t key);
    /// An object that has or had a temporary identifier here.
    ManagedObject* objectWithToken(const EntityDescription& entity, std::int64_t token) const;
    ManagedObject& insert(const EntityDescription& entity);
    /// Gives an inserted object its row number.
    void makePermanent(ManagedObject& object, std::int64_t key);
    /// Ends an object's life in the context; whoever refers to it was told before.
    void forget(ManagedObject& object);
    /// To-many relationships to this entity are read afresh when they are asked for.
    void forgetMembers(const EntityDescription& destination);
    void forgetAllMembers();

    // Unsaved changes
    bool hasChanges() const;
    /// Notes that a property changed, or, for an object that was not saved yet, may have.
    void noteChange(ManagedObject& object);
    /// Takes an object whose changes have all gone from the changed ones.
    void noteUnchanged(ManagedObject& object);
    void noteDeletion(ManagedObject& object);
    /// Takes a deletion back.
    void noteUndeleted(ManagedObject& object);
    /// Ends an object whose deletion was saved.
    void noteSavedDeletion(ManagedObject& object);
    /// Ends an object whose row is deleted in the file, with all that was unsaved of it.
    void noteGone(ManagedObject& object);
    std::vector<ManagedObject*> pending(ObjectSequence EntityState::*sequence) const;

    // The store
    SqliteStore* store() const;
    /// A prepared statement, counted; an error when no store is loaded.
    std::variant<SqliteStatement, StoreError> prepare(std::string_view sql);
    /// Looks whether anybody but this context has committed since rows were read, see `readVersion`.
    void updateReadVersion();
    /// Notes this context's own commit, which leaves nothing in memory out of date. Nobody else can have
    /// committed since the last look.
    void noteOwnSave();
    std::uint32_t nextSerial() { return ++serial_; }

    ManagedObjectContext& context;
    PersistentStoreCoordinator& coordinator;
    std::vector<EntityState> entities;  ///< in the model's order
    ChangeNotices notices;
    std::size_t statementCount = 0;
    /// Moves when a commit was noticed. Rows read under an earlier number may be out of date, and so may
    /// the members of relationships.
    std::uint32_t readVersion = 1;

  private:
    void leavePending(ObjectState& state);
    ManagedObject& own(std::unique_ptr<ManagedObject> object);

    std::vector<std::unique_ptr<ManagedObject>> owned_;
    std::vector<std::pair<std::int64_t, ManagedObject*>> byToken_;  ///< ascending
    std::uint32_t serial_ = 0;
    std::pair<std::int64_t, std::uint64_t> lastCommit_{0, 0};
};

}  // namespace corvane
