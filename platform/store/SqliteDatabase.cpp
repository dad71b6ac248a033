#include "platform/store/SqliteDatabase.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <cerrno>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {

namespace {

// SQLite tells a full disk only when a write came short; a quota and a limit on files are errors of the
// device to it, and the system knows better.
bool isOutOfSpace(int code, int cause) {
    if (code == SQLITE_FULL) return true;
    return code == SQLITE_IOERR && (cause == ENOSPC || cause == EDQUOT || cause == EFBIG);
}

StoreError::Kind kindOfCode(int code) {
    switch (code) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return StoreError::Kind::kBusy;
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return StoreError::Kind::kReadOnly;
        case SQLITE_CANTOPEN:
        case SQLITE_AUTH:
            return StoreError::Kind::kCannotOpen;
        case SQLITE_NOTADB:
            return StoreError::Kind::kNotAStore;
        default:
            return StoreError::Kind::kFailed;
    }
}

// A URI, since the way of access is a parameter. Characters that mean something in a URI are escaped.
std::string uriOfFile(const std::filesystem::path& file, SqliteDatabase::Access access) {
    std::string uri = "file://";
    for (const char c : std::filesystem::absolute(file).string()) {
        if (c == '%') {
            uri += "%25";
        } else if (c == '?') {
            uri += "%3f";
        } else if (c == '#') {
            uri += "%23";
        } else {
            uri += c;
        }
    }
    if (access == SqliteDatabase::Access::kMainFile) uri += "?immutable=1";
    if (access == SqliteDatabase::Access::kUnwritten) uri += "?vfs=unix-none";
    return uri;
}

int openFlags(SqliteDatabase::Access access) {
    const bool reads =
        access == SqliteDatabase::Access::kMainFile || access == SqliteDatabase::Access::kUnwritten;
    return SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | (reads ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
}

// Other programs may still need the log and its index, and a display must not copy the log into the file.
void keepCompanionsOnClose(sqlite3* connection) {
    sqlite3_db_config(connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    int persists = 1;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_PERSIST_WAL, &persists);
}

void configure(SQLite::Database& connection, SqliteDatabase::Access access) {
    sqlite3_db_config(connection.getHandle(), SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
    if (access == SqliteDatabase::Access::kDraft) return;
    keepCompanionsOnClose(connection.getHandle());
    const bool isShared = access == SqliteDatabase::Access::kShared;
    // Alone from before the first access on: the index of the log then lives in memory.
    connection.exec(isShared ? "PRAGMA synchronous=FULL; PRAGMA recursive_triggers=1"
                             : "PRAGMA locking_mode=EXCLUSIVE");
}

}  // namespace

StoreError storeErrorOf(sqlite3* connection) {
    const int cause = errno;
    const int code = sqlite3_extended_errcode(connection) & 0xff;
    if (isOutOfSpace(code, cause)) {
        return {StoreError::Kind::kNoSpace, localizedUtf8("There is no space left on the store's disk.")};
    }
    const StoreError::Kind kind = kindOfCode(code);
    if (kind == StoreError::Kind::kBusy)
        return {kind, localizedUtf8("Another program keeps the store locked.")};
    return {kind,
            localizedUtf8("The store's database reports: %@.", {textFromUtf8(sqlite3_errmsg(connection))})};
}

std::variant<std::unique_ptr<SqliteDatabase>, StoreError> SqliteDatabase::open(
    const std::filesystem::path& file, Access access, std::chrono::milliseconds busyTimeout) {
    try {
        auto connection = std::make_unique<SQLite::Database>(uriOfFile(file, access), openFlags(access),
                                                             static_cast<int>(busyTimeout.count()));
        configure(*connection, access);
        return std::unique_ptr<SqliteDatabase>(new SqliteDatabase(std::move(connection)));
    } catch (const SQLite::Exception& failure) {
        return StoreError{kindOfCode(failure.getErrorCode()),
                          localizedUtf8("The store cannot be opened: %@.", {textFromUtf8(failure.what())})};
    }
}

SqliteDatabase::SqliteDatabase(std::unique_ptr<SQLite::Database> connection)
    : connection_(std::move(connection)), statements_(std::make_unique<StatementCache>(handle())) {}

SqliteDatabase::~SqliteDatabase() { statements_.reset(); }

sqlite3* SqliteDatabase::handle() const { return connection_->getHandle(); }

bool SqliteDatabase::isReadOnly() const { return sqlite3_db_readonly(handle(), "main") == 1; }

std::variant<SqliteStatement, StoreError> SqliteDatabase::prepare(std::string_view sql) {
    CachedStatement* statement = statements_->lend(sql);
    if (!statement) return statements_->lastError();
    return SqliteStatement(*statements_, *statement);
}

std::optional<StoreError> SqliteDatabase::execute(const std::string& sql) {
    errno = 0;
    if (sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return std::nullopt;
    statements_->noteError();
    return statements_->lastError();
}

std::optional<std::int64_t> SqliteDatabase::integer(std::string_view sql) {
    CachedStatement* statement = statements_->lend(sql);
    if (!statement) return std::nullopt;
    std::optional<std::int64_t> value;
    errno = 0;
    const int code = sqlite3_step(statement->handle.get());
    if (code == SQLITE_ROW) value = sqlite3_column_int64(statement->handle.get(), 0);
    if (code != SQLITE_ROW && code != SQLITE_DONE) statements_->noteError();
    statements_->takeBack(*statement);
    return value;
}

std::int64_t SqliteDatabase::changes() const { return sqlite3_changes64(handle()); }

}  // namespace corvane
