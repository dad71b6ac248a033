#include "platform/store/StoreOpening.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/PlatformFunctions.h"
#include "platform/store/SqlQuery.h"
#include "platform/store/StoreCreation.h"

namespace corvane {

namespace {

using Path = std::filesystem::path;
using Access = SqliteDatabase::Access;
using Reading = StoreSchema::Reading;

StoreError cannotOpen(const Path& file, const std::string& reason) {
    return {StoreError::Kind::kCannotOpen,
            localizedUtf8("The store %1$@ cannot be opened: %2$@",
                          {textFromUtf8(file.string()), textFromUtf8(reason)})};
}

StoreError cannotOpen(const Path& file, int cause) {
    return cannotOpen(file, std::generic_category().message(cause) + ".");
}

StoreError notAStore(const Path& file) {
    return {StoreError::Kind::kNotAStore,
            localizedUtf8("The file %@ is no task store.", {textFromUtf8(file.string())})};
}

bool hasContent(const Path& file, const char* suffix) {
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(file.string() + suffix, failure);
    return !failure && size > 0;
}

bool hasLog(const Path& file) { return hasContent(file, "-wal"); }
bool hasJournal(const Path& file) { return hasContent(file, "-journal"); }

bool allows(const Path& path, int access) {
    return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0;
}

bool isMissing(const Path& file) {
    struct stat status {};
    return stat(file.c_str(), &status) != 0 && errno == ENOENT;
}

std::optional<StoreError> makeWhereMissing(const PersistentStoreDescription& description,
                                           const ManagedObjectModel& model) {
    const Path& file = description.file;
    if (!isMissing(file)) return std::nullopt;
    if (!description.createsMissingStore) return cannotOpen(file, ENOENT);
    if (!hasLog(file) && !hasJournal(file)) return createStoreFile(file, model);
    // SQLite would delete a log or journal without its file, and with it the rows in it. Unless another
    // process has made the store and saved to it just now.
    return isMissing(file) ? std::optional(cannotOpen(file, localizedUtf8("Only its log is there.")))
                           : std::nullopt;
}

// SQLite must not see everything: it takes an empty file for a database and waits for ever at a pipe.
std::optional<StoreError> refuseUnseen(const Path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return cannotOpen(file, errno);
    if (!S_ISREG(status.st_mode) || status.st_size == 0) return notAStore(file);
    if (!allows(file, R_OK)) return cannotOpen(file, errno);
    return std::nullopt;
}

StoreError readingError(const Path& file, Reading reading, const StoreError& reported) {
    const bool isForeign = reading == Reading::kForeign || reported.kind == StoreError::Kind::kNotAStore;
    return isForeign ? notAStore(file) : reported;
}

std::optional<StoreError> lookAt(const PersistentStoreDescription& description,
                                 const ManagedObjectModel& model, Access access) {
    constexpr std::chrono::milliseconds kNoWaiting{0};
    const auto opened = SqliteDatabase::open(description.file, access, kNoWaiting);
    if (const auto* error = std::get_if<StoreError>(&opened)) return *error;
    SqliteDatabase& database = *std::get<0>(opened);
    const Reading reading = StoreSchema::recognise(database, model);
    if (reading == Reading::kFits) return std::nullopt;
    return readingError(description.file, reading, storeErrorOf(database.handle()));
}

// A look that leaves no trace. Most files say in their main part what they are; a young store, or one copied
// from a device, may have its tables in the log only.
std::optional<StoreError> recognise(const PersistentStoreDescription& description,
                                    const ManagedObjectModel& model) {
    const auto error = lookAt(description, model, Access::kMainFile);
    if (!error) return std::nullopt;
    const bool isDamaged = error->kind == StoreError::Kind::kFailed;
    // Whether a save that died half-way is the damage, only its rollback can tell.
    if (hasJournal(description.file)) return isDamaged ? std::nullopt : error;
    if (!hasLog(description.file)) return error;
    const bool isLockable = allows(description.file, W_OK);
    auto logError = lookAt(description, model, isLockable ? Access::kAlone : Access::kUnwritten);
    // Somebody has it open: an ordinary connection beside theirs changes nothing and can tell.
    if (logError && logError->kind == StoreError::Kind::kBusy) return std::nullopt;
    return logError;
}

struct Connection {
    std::unique_ptr<SqliteDatabase> database;
    StoreSchema schema;
};

std::variant<Connection, StoreError> connect(const PersistentStoreDescription& description,
                                             const ManagedObjectModel& model, Access access) {
    auto opened = SqliteDatabase::open(description.file, access, description.busyTimeout);
    if (const auto* error = std::get_if<StoreError>(&opened)) return *error;
    Connection connection{std::move(std::get<0>(opened)), StoreSchema(model)};
    const Reading reading = connection.schema.read(*connection.database);
    if (reading == Reading::kFits) return connection;
    return readingError(description.file, reading, storeErrorOf(connection.database->handle()));
}

// Where SQLite cannot have the index of the log beside the file, nobody who writes has it open.
std::variant<Connection, StoreError> connectUnwritten(const PersistentStoreDescription& description,
                                                      const ManagedObjectModel& model) {
    return connect(description, model, hasLog(description.file) ? Access::kUnwritten : Access::kMainFile);
}

std::string placeReason(const Path& file, const SqliteDatabase& database) {
    if (database.isReadOnly()) return localizedUtf8("The store's file is read-only.");
    return allows(file.parent_path(), W_OK) ? "" : localizedUtf8("The store's directory is read-only.");
}

bool isForbidden(const StoreError& error) {
    return error.kind == StoreError::Kind::kReadOnly || error.kind == StoreError::Kind::kCannotOpen;
}

std::variant<Connection, StoreError> connectAsAllowed(const PersistentStoreDescription& description,
                                                      const ManagedObjectModel& model) {
    auto connected = connect(description, model, Access::kShared);
    const auto* error = std::get_if<StoreError>(&connected);
    if (!error || !isForbidden(*error) || hasJournal(description.file)) return connected;
    return connectUnwritten(description, model);
}

std::variant<OpenedStore, StoreError> openFile(const PersistentStoreDescription& description,
                                               const ManagedObjectModel& model) {
    const Path& file = description.file;
    if (auto error = makeWhereMissing(description, model)) return *error;
    if (auto error = refuseUnseen(file)) return *error;
    if (auto error = recognise(description, model)) return *error;
    auto connected = connectAsAllowed(description, model);
    if (const auto* error = std::get_if<StoreError>(&connected)) return *error;
    auto& [database, schema] = std::get<Connection>(connected);

    const bool migrates = description.migratesAutomatically && description.infersMappingModel;
    if (!migrates && !schema.isComplete()) {
        return StoreError{StoreError::Kind::kInvalid,
                          localizedUtf8("The store %@ is of an older version of the model.",
                                        {textFromUtf8(file.string())})};
    }
    registerPlatformFunctions(database->handle());
    registerQueryFunctions(database->handle());
    const std::optional<StoreMetadata> metadata = readStoreMetadata(*database);
    if (!metadata) return database->lastError();
    std::string reason = placeReason(file, *database);
    return OpenedStore{file, std::move(database), *metadata, std::move(schema), std::move(reason)};
}

}  // namespace

std::variant<OpenedStore, StoreError> openStore(PersistentStoreDescription description,
                                                const ManagedObjectModel& model) {
    if (description.file.empty()) {
        return StoreError{StoreError::Kind::kNoLocation, localizedUtf8("There is no place for a store.")};
    }
    // The working directory may change while the store is open.
    description.file = std::filesystem::absolute(description.file);
    auto opened = openFile(description, model);
    const auto* error = std::get_if<StoreError>(&opened);
    if (!error || error->kind != StoreError::Kind::kFailed) return opened;
    return cannotOpen(description.file, error->message);
}

}  // namespace corvane
