// A container: a model, the coordinator of its store file and the context that the program works in.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/store/ManagedObjectContext.h"
#include "platform/store/ModelDescription.h"
#include "platform/store/PersistentStoreDescription.h"
#include "platform/store/StoreError.h"

namespace corvane {

class SqliteStore;

class PersistentStoreCoordinator {
  public:
    explicit PersistentStoreCoordinator(const ManagedObjectModel& model);
    ~PersistentStoreCoordinator();

    const ManagedObjectModel& model() const { return model_; }
    /// Opens and recognises a store. On an error there is no store and the file is as it was.
    [[nodiscard]] std::optional<StoreError> addStore(const PersistentStoreDescription& description);
    /// Null when no store was loaded.
    SqliteStore* store() const { return store_.get(); }

    /// How often contexts of this coordinator have saved. They share one connection, whose data version does
    /// not move with their own commits.
    std::uint64_t saveCount() const { return saveCount_; }
    void noteSave() { ++saveCount_; }

  private:
    const ManagedObjectModel& model_;
    std::unique_ptr<SqliteStore> store_;
    std::uint64_t saveCount_ = 0;
};

class PersistentContainer {
  public:
    PersistentContainer(std::string name, const ManagedObjectModel& model);
    virtual ~PersistentContainer();
    PersistentContainer(const PersistentContainer&) = delete;
    PersistentContainer& operator=(const PersistentContainer&) = delete;

    const std::string& name() const { return name_; }
    std::vector<PersistentStoreDescription>& persistentStoreDescriptions() { return descriptions_; }
    PersistentStoreCoordinator& persistentStoreCoordinator() { return coordinator_; }
    ManagedObjectContext& viewContext() { return *viewContext_; }

    /// Loads the described store; tells the handler of the error, if any.
    void loadPersistentStores(const std::function<void(const std::optional<StoreError>&)>& completion);

    /// A context of its own over the same store.
    std::unique_ptr<ManagedObjectContext> newBackgroundContext();

  private:
    std::string name_;
    std::vector<PersistentStoreDescription> descriptions_;
    PersistentStoreCoordinator coordinator_;
    std::unique_ptr<ManagedObjectContext> viewContext_;
};

}  // namespace corvane
