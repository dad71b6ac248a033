#include "platform/store/StoreCreation.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/foundation/FileContents.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/SqliteDatabase.h"
#include "platform/store/StoreMetadata.h"
#include "platform/store/StoreTables.h"

namespace corvane {

namespace {

StoreError creationError(const std::filesystem::path& file, int cause) {
    const bool isFull = cause == ENOSPC || cause == EDQUOT || cause == EFBIG;
    return {
        isFull ? StoreError::Kind::kNoSpace : StoreError::Kind::kCannotOpen,
        localizedUtf8("The store %1$@ cannot be made: %2$@.",
                      {textFromUtf8(file.string()), textFromUtf8(std::generic_category().message(cause))})};
}

// A new file of our own beside the store, removed at the end unless it took the store's name.
class DraftFile {
  public:
    explicit DraftFile(const std::filesystem::path& store)
        : path_((store.parent_path() / ("." + store.filename().string() + ".XXXXXX")).string()) {
        const int descriptor = mkstemp(path_.data());
        if (descriptor < 0) {
            cause_ = errno;
            return;
        }
        // The mask of the process may have taken more than the mode that mkstemp gives.
        if (fchmod(descriptor, S_IRUSR | S_IWUSR) != 0) cause_ = errno;
        close(descriptor);
    }
    ~DraftFile() {
        if (path_.empty()) return;
        for (const char* suffix : {"", "-journal", "-wal", "-shm"}) unlink((path_ + suffix).c_str());
    }
    DraftFile(const DraftFile&) = delete;
    DraftFile& operator=(const DraftFile&) = delete;

    int cause() const { return cause_; }
    const std::string& path() const { return path_; }

    /// Takes the name, unless it is taken. @return 0 or the cause
    int publish(const std::string& name) {
        if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) {
            path_.clear();
            return 0;
        }
        // File systems that cannot rename so can make a second name, which never replaces either.
        const bool cannotRename = errno == EINVAL || errno == ENOSYS;
        if (cannotRename && link(path_.c_str(), name.c_str()) == 0) return 0;
        return errno;
    }

  private:
    std::string path_;
    int cause_ = 0;
};

std::optional<StoreError> fillTable(SqliteDatabase& database, const ManagedObjectModel& model) {
    for (std::size_t i = 0; i < model.entities().size(); ++i) {
        const std::string row = std::to_string(i + 1) + ", '" + std::string(model.entities()[i].name()) + "'";
        if (auto error = database.execute(
                "INSERT INTO Z_PRIMARYKEY (Z_ENT, Z_NAME, Z_SUPER, Z_MAX) VALUES (" + row + ", 0, 0)")) {
            return error;
        }
    }
    auto prepared = database.prepare("INSERT INTO Z_METADATA (Z_VERSION, Z_UUID, Z_PLIST) VALUES (1, ?, ?)");
    auto* metadata = std::get_if<SqliteStatement>(&prepared);
    if (!metadata) return database.lastError();
    metadata->bindUtf8(1, newStoreUuid());
    metadata->bindBytes(2, propertiesOfNewStore());
    if (metadata->step() != SqliteStatement::Step::kDone) return database.lastError();
    return std::nullopt;
}

std::optional<StoreError> buildStore(const std::string& path, const ManagedObjectModel& model) {
    auto opened = SqliteDatabase::open(path, SqliteDatabase::Access::kDraft, std::chrono::milliseconds(0));
    if (const auto* error = std::get_if<StoreError>(&opened)) return *error;
    SqliteDatabase& database = *std::get<0>(opened);
    // Nobody else knows the file: until it has its name it needs no journal beside it.
    if (auto error = database.execute("PRAGMA page_size=4096; PRAGMA auto_vacuum=2; PRAGMA journal_mode=OFF; "
                                      "BEGIN")) {
        return error;
    }
    for (const std::string& statement : statementsForNewTables(model)) {
        if (auto error = database.execute(statement)) return error;
    }
    if (auto error = fillTable(database, model)) return error;
    if (auto error = database.execute("COMMIT")) return error;
    return database.execute("PRAGMA journal_mode=WAL");
}

}  // namespace

std::optional<StoreError> createStoreFile(const std::filesystem::path& file,
                                          const ManagedObjectModel& model) {
    DraftFile draft(file);
    if (draft.cause() != 0) return creationError(file, draft.cause());
    if (auto error = buildStore(draft.path(), model)) return error;
    const int cause = draft.publish(file.string());
    if (cause != 0 && cause != EEXIST) return creationError(file, cause);
    synchronise(file.parent_path());  // so that the file is whole after a crash of the machine, too
    return std::nullopt;
}

}  // namespace corvane
