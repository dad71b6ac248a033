#include "platform/store/SqliteStatement.h"

#include <sqlite3.h>

#include <cerrno>
#include <utility>

#include "platform/foundation/Text.h"
#include "platform/store/ManagedObject.h"
#include "platform/store/StatementCache.h"

namespace corvane {

namespace {

struct Binder {
    SqliteStatement& statement;
    int parameter;

    void operator()(std::monostate) const { statement.bindNull(parameter); }
    void operator()(bool value) const { statement.bindInteger(parameter, value ? 1 : 0); }
    void operator()(std::int64_t value) const { statement.bindInteger(parameter, value); }
    void operator()(double value) const { statement.bindDouble(parameter, value); }
    void operator()(Date value) const { statement.bindDouble(parameter, value.time_since_epoch().count()); }
    void operator()(const std::u16string& value) const { statement.bindText(parameter, value); }
    void operator()(const Bytes& value) const { statement.bindBytes(parameter, value); }
    void operator()(ManagedObject* object) const {
        const ManagedObjectID objectID = object ? object->objectID() : ManagedObjectID{};
        if (objectID.isTemporary || !objectID.entity) return statement.bindNull(parameter);
        statement.bindInteger(parameter, objectID.key);
    }
};

}  // namespace

SqliteStatement::SqliteStatement(StatementCache& cache, CachedStatement& statement)
    : cache_(&cache), cached_(&statement), statement_(statement.handle.get()) {}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : cache_(other.cache_),
      cached_(std::exchange(other.cached_, nullptr)),
      statement_(other.statement_),
      isRunning_(other.isRunning_),
      hasUnboundValue_(other.hasUnboundValue_) {}

SqliteStatement::~SqliteStatement() {
    if (cached_) cache_->takeBack(*cached_);
}

void SqliteStatement::bind(int parameter, const Value& value) { std::visit(Binder{*this, parameter}, value); }

void SqliteStatement::bindInteger(int parameter, std::int64_t value) {
    noteBinding(sqlite3_bind_int64(statement_, parameter, value));
}

void SqliteStatement::bindDouble(int parameter, double value) {
    noteBinding(sqlite3_bind_double(statement_, parameter, value));
}

void SqliteStatement::bindText(int parameter, std::u16string_view value) {
    bindUtf8(parameter, utf8FromText(value));
}

void SqliteStatement::bindUtf8(int parameter, std::string_view value) {
    // A null pointer would bind NULL, which an empty view may hold.
    const char* start = value.empty() ? "" : value.data();
    noteBinding(
        sqlite3_bind_text64(statement_, parameter, start, value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void SqliteStatement::bindBytes(int parameter, std::span<const std::uint8_t> value) {
    if (value.empty()) return noteBinding(sqlite3_bind_zeroblob(statement_, parameter, 0));
    noteBinding(sqlite3_bind_blob64(statement_, parameter, value.data(), value.size(), SQLITE_TRANSIENT));
}

void SqliteStatement::bindNull(int parameter) { noteBinding(sqlite3_bind_null(statement_, parameter)); }

SqliteStatement::Step SqliteStatement::step() {
    if (hasUnboundValue_) return Step::kError;
    if (!std::exchange(isRunning_, true)) cache_->countRun();
    errno = 0;  // an error's cause is looked for there
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return Step::kRow;
    if (code == SQLITE_DONE) return Step::kDone;
    cache_->noteError();
    return Step::kError;
}

void SqliteStatement::reset() {
    sqlite3_reset(statement_);
    isRunning_ = false;
}

void SqliteStatement::clearBindings() {
    sqlite3_clear_bindings(statement_);
    hasUnboundValue_ = false;
}

SqliteStatement::StorageClass SqliteStatement::storageClass(int column) const {
    switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
            return StorageClass::kInteger;
        case SQLITE_FLOAT:
            return StorageClass::kReal;
        case SQLITE_TEXT:
            return StorageClass::kText;
        case SQLITE_BLOB:
            return StorageClass::kBlob;
        default:
            return StorageClass::kNull;
    }
}

std::int64_t SqliteStatement::integer(int column) const { return sqlite3_column_int64(statement_, column); }

double SqliteStatement::real(int column) const { return sqlite3_column_double(statement_, column); }

std::string_view SqliteStatement::utf8(int column) const {
    const void* start = sqlite3_column_text(statement_, column);
    if (!start) return {};
    const int size = sqlite3_column_bytes(statement_, column);
    return {static_cast<const char*>(start), static_cast<std::size_t>(size)};
}

std::span<const std::uint8_t> SqliteStatement::bytes(int column) const {
    const void* start = sqlite3_column_blob(statement_, column);
    if (!start) return {};
    const int size = sqlite3_column_bytes(statement_, column);
    return {static_cast<const std::uint8_t*>(start), static_cast<std::size_t>(size)};
}

void SqliteStatement::noteBinding(int code) {
    if (code == SQLITE_OK) return;
    cache_->noteError();
    hasUnboundValue_ = true;
}

}  // namespace corvane
