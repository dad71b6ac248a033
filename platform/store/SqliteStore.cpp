#include "platform/store/SqliteStore.h"

#include <sys/stat.h>

#include <optional>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/store/SqliteDatabase.h"
#include "platform/store/StoreOpening.h"

namespace corvane {

namespace {

SqliteStore::FileIdentity identityOf(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino};
}

}  // namespace

std::variant<std::unique_ptr<SqliteStore>, StoreError> SqliteStore::open(
    const PersistentStoreDescription& description, const ManagedObjectModel& model) {
    auto opened = openStore(description, model);
    if (const auto* error = std::get_if<StoreError>(&opened)) return *error;
    return std::unique_ptr<SqliteStore>(new SqliteStore(model, std::move(std::get<OpenedStore>(opened))));
}

SqliteStore::SqliteStore(const ManagedObjectModel& model, OpenedStore opened)
    : file_(std::move(opened.file)),
      identity_(identityOf(file_)),
      model_(model),
      database_(std::move(opened.database)),
      metadata_(std::move(opened.metadata)),
      schema_(std::move(opened.schema)),
      placeReason_(std::move(opened.readOnlyReason)) {}

SqliteStore::~SqliteStore() = default;

const std::string& SqliteStore::readOnlyReason() const {
    static const std::string kHistory =
        localizedUtf8("The store keeps a history of its changes, which only its own application may write.");
    return schema_.hasHistory() ? kHistory : placeReason_;
}

std::int64_t SqliteStore::dataVersion() {
    dataVersion_ = database_->integer("PRAGMA data_version").value_or(dataVersion_);
    return dataVersion_;
}

bool SqliteStore::isReplaced() const { return identityOf(file_) != identity_; }

bool SqliteStore::hasColumn(const EntityDescription& entity, PropertyIndex property) {
    schema_.readIfNoticed(*database_);
    return schema_.hasColumn(entity, property);
}

const SelectList& SqliteStore::selectList(const EntityDescription& entity, std::string_view alias) {
    schema_.readIfNoticed(*database_);
    return schema_.selectList(entity, alias);
}

std::variant<SqliteStatement, StoreError> SqliteStore::prepare(std::string_view sql) {
    return database_->prepare(sql);
}

StoreError SqliteStore::lastError() const { return database_->lastError(); }

std::size_t SqliteStore::statementCount() const { return database_->runs(); }

}  // namespace corvane
