#include "platform/store/PersistentContainer.h"

#include <utility>
#include <variant>

#include "platform/foundation/Localization.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

PersistentStoreCoordinator::PersistentStoreCoordinator(const ManagedObjectModel& model) : model_(model) {}

PersistentStoreCoordinator::~PersistentStoreCoordinator() = default;

std::optional<StoreError> PersistentStoreCoordinator::addStore(
    const PersistentStoreDescription& description) {
    if (store_) return StoreError{StoreError::Kind::kInvalid, localizedUtf8("a store is loaded already")};
    auto opened = SqliteStore::open(description, model_);
    if (const auto* error = std::get_if<StoreError>(&opened)) return *error;
    store_ = std::get<std::unique_ptr<SqliteStore>>(std::move(opened));
    return std::nullopt;
}

PersistentContainer::PersistentContainer(std::string name, const ManagedObjectModel& model)
    : name_(std::move(name)),
      descriptions_(1),
      coordinator_(model),
      viewContext_(std::make_unique<ManagedObjectContext>(coordinator_)) {}

PersistentContainer::~PersistentContainer() = default;

void PersistentContainer::loadPersistentStores(
    const std::function<void(const std::optional<StoreError>&)>& completion) {
    std::optional<StoreError> error =
        descriptions_.empty()
            ? StoreError{StoreError::Kind::kNoLocation, localizedUtf8("no store is described")}
            : coordinator_.addStore(descriptions_.front());
    if (completion) completion(error);
}

std::unique_ptr<ManagedObjectContext> PersistentContainer::newBackgroundContext() {
    return std::make_unique<ManagedObjectContext>(coordinator_);
}

}  // namespace corvane
