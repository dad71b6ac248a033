#include "platform/store/SaveTransaction.h"

#include <algorithm>
#include <limits>

#include "platform/foundation/Localization.h"
#include "platform/store/SqliteDatabase.h"
#include "platform/store/SqliteStore.h"
#include "platform/store/StoreTables.h"

namespace corvane {

namespace {

using Step = SqliteStatement::Step;

constexpr std::int64_t kFirstVersion = 1;
constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

// Z_OPT as a number, whatever a tool left there; the same conversion as reading the column as an integer.
const std::string kVersion = "IFNULL(CAST(Z_OPT AS INTEGER), 0)";
// One more than the largest number would be a real one, which reads as the same version.
const std::string kRaisedVersion =
    "CASE " + kVersion + " WHEN 9223372036854775807 THEN 1 ELSE " + kVersion + " + 1 END";

// Only that it differs counts.
std::int64_t raised(std::int64_t version) { return version == kLargest ? kFirstVersion : version + 1; }

bool isZero(const Value& value) {
    if (const bool* boolean = std::get_if<bool>(&value)) return !*boolean;
    if (const std::int64_t* integer = std::get_if<std::int64_t>(&value)) return *integer == 0;
    const double* real = std::get_if<double>(&value);
    return real && *real == 0;
}

bool isDefault(const PropertyDescription& property, const Value& value) {
    return isNil(value) || (defaultsToZero(property.kind) && isZero(value));
}

std::string updateStatement(const EntityDescription& entity, const std::vector<PropertyIndex>& columns) {
    std::string text = "UPDATE " + entity.table() + " SET Z_OPT = ?1";
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += ", " + entity.column(columns[i]) + " = ?" + std::to_string(i + 4);
    }
    return text + " WHERE Z_PK = ?2 AND " + kVersion + " = ?3";
}

}  // namespace

SaveTransaction::SaveTransaction(SqliteStore& store) : store_(store) {
    if (store.isReadOnly()) {
        fail({StoreError::Kind::kReadOnly, store.readOnlyReason()});
    } else if (store.isReplaced()) {
        fail({StoreError::Kind::kCannotOpen, localizedUtf8("The store's file was replaced or removed.")});
    } else {
        begin();
    }
}

SaveTransaction::~SaveTransaction() {
    if (isOpen_) fail({});
}

std::int64_t SaveTransaction::takeKeys(const EntityDescription& entity, std::int64_t count) {
    std::optional<SqliteStatement> raise = prepare("UPDATE Z_PRIMARYKEY SET Z_MAX = ? WHERE Z_ENT = ?");
    const std::optional<std::int64_t> last = lastKey(entity);
    if (!raise || !last) return 0;
    if (*last > kLargest - count) {
        fail({StoreError::Kind::kFailed, localizedUtf8("The store has no row number left.")});
        return 0;
    }
    raise->bindInteger(1, *last + count);
    raise->bindInteger(2, store_.schema_.entityNumber(entity));
    return run(*raise) ? *last + 1 : 0;
}

void SaveTransaction::insertRow(const EntityDescription& entity, std::int64_t key,
                                const std::vector<ChangedValue>& values) {
    if (!makeRoom(entity, values)) return;
    Insertion* insertion = insertionInto(entity);
    if (!insertion) return;
    SqliteStatement& statement = insertion->statement;
    statement.clearBindings();
    statement.bindInteger(1, key);
    statement.bindInteger(2, store_.schema_.entityNumber(entity));
    for (const auto& [property, value] : values) {
        const int parameter = insertion->parameters[property];
        if (parameter != 0) statement.bind(parameter, value);
    }
    run(statement);
}

std::optional<std::int64_t> SaveTransaction::version(const EntityDescription& entity, std::int64_t key) {
    auto statement = prepare("SELECT " + kVersion + " FROM " + entity.table() + " WHERE Z_PK = ?");
    if (!statement) return std::nullopt;
    statement->bindInteger(1, key);
    const Step step = statement->step();
    if (step == Step::kError) fail(store_.lastError());
    if (step != Step::kRow) return std::nullopt;
    return statement->integer(0);
}

std::optional<std::int64_t> SaveTransaction::updateRow(const EntityDescription& entity, std::int64_t key,
                                                       std::int64_t version,
                                                       const std::vector<ChangedValue>& values) {
    if (!makeRoom(entity, values)) return std::nullopt;
    SqliteStatement* statement = updateOf(presentColumns(entity, values));
    if (!statement) return std::nullopt;
    const std::int64_t newVersion = raised(version);
    statement->bindInteger(1, newVersion);
    statement->bindInteger(2, key);
    statement->bindInteger(3, version);
    int parameter = 4;
    for (const auto& [property, value] : values) {
        if (store_.schema_.hasColumn(entity, property)) statement->bind(parameter++, value);
    }
    if (!run(*statement) || store_.database_->changes() == 0) return std::nullopt;
    return newVersion;
}

bool SaveTransaction::deleteRow(const EntityDescription& entity, std::int64_t key, std::int64_t version) {
    auto statement = prepare("DELETE FROM " + entity.table() + " WHERE Z_PK = ? AND " + kVersion + " = ?");
    if (!statement) return false;
    statement->bindInteger(1, key);
    statement->bindInteger(2, version);
    return run(*statement) && store_.database_->changes() > 0;
}

void SaveTransaction::nullifyReferences(const EntityDescription& entity, PropertyIndex toOne,
                                        std::int64_t key) {
    if (!store_.schema_.hasColumn(entity, toOne)) return;
    const std::string& column = entity.column(toOne);
    auto statement = prepare("UPDATE " + entity.table() + " SET " + column +
                             " = NULL, Z_OPT = " + kRaisedVersion + " WHERE " + column + " = ?");
    if (!statement) return;
    statement->bindInteger(1, key);
    run(*statement);
}

std::vector<std::int64_t> SaveTransaction::referencingKeys(const EntityDescription& entity,
                                                           PropertyIndex toOne, std::int64_t key) {
    std::vector<std::int64_t> keys;
    if (!store_.schema_.hasColumn(entity, toOne)) return keys;
    auto statement = prepare("SELECT Z_PK FROM " + entity.table() + " WHERE " + entity.column(toOne) +
                             " = ? ORDER BY Z_PK");
    if (!statement) return keys;
    statement->bindInteger(1, key);
    Step step = statement->step();
    for (; step == Step::kRow; step = statement->step()) keys.push_back(statement->integer(0));
    if (step == Step::kError) fail(store_.lastError());
    return keys;
}

std::optional<StoreError> SaveTransaction::commit() {
    std::optional<SqliteStatement> commit = prepare("COMMIT");
    if (commit && run(*commit)) isOpen_ = false;
    return error_;
}

void SaveTransaction::begin() {
    std::optional<SqliteStatement> statement = prepare("BEGIN IMMEDIATE");
    if (!statement || !run(*statement)) return;
    isOpen_ = true;
    store_.schema_.readIfChanged(*store_.database_);
    // Another process may have turned the history on since the store was opened.
    if (store_.isReadOnly()) fail({StoreError::Kind::kReadOnly, store_.readOnlyReason()});
}

std::optional<SqliteStatement> SaveTransaction::prepare(const std::string& sql) {
    if (failed()) return std::nullopt;
    auto prepared = store_.prepare(sql);
    if (auto* statement = std::get_if<SqliteStatement>(&prepared)) return std::move(*statement);
    fail(std::get<StoreError>(prepared));
    return std::nullopt;
}

bool SaveTransaction::run(SqliteStatement& statement) {
    const bool isDone = statement.step() == Step::kDone;
    if (!isDone) fail(store_.lastError());
    statement.reset();
    return isDone;
}

// The highest number that was ever given. Tools leave Z_MAX behind the rows that they insert.
std::optional<std::int64_t> SaveTransaction::lastKey(const EntityDescription& entity) {
    auto statement = prepare("SELECT max(IFNULL(CAST(Z_MAX AS INTEGER), 0), IFNULL((SELECT max(Z_PK) FROM " +
                             entity.table() + "), 0), 0) FROM Z_PRIMARYKEY WHERE Z_ENT = ?");
    if (!statement) return std::nullopt;
    statement->bindInteger(1, store_.schema_.entityNumber(entity));
    const Step step = statement->step();
    if (step == Step::kRow) return statement->integer(0);
    const bool isMissing = step == Step::kDone;
    fail(isMissing ? StoreError{StoreError::Kind::kFailed,
                                localizedUtf8("The store does not count the rows of its tables.")}
                   : store_.lastError());
    return std::nullopt;
}

SaveTransaction::Insertion* SaveTransaction::insertionInto(const EntityDescription& entity) {
    const auto found = insertions_.find(&entity);
    if (found != insertions_.end()) return &found->second;
    std::string columns = "Z_PK, Z_ENT, Z_OPT";
    std::string parameters = "?1, ?2, " + std::to_string(kFirstVersion);
    std::vector<int> parameterOf(entity.properties().size(), 0);
    int next = 3;
    for (PropertyIndex i = 0; i < parameterOf.size(); ++i) {
        if (!store_.schema_.hasColumn(entity, i)) continue;
        columns += ", " + entity.column(i);
        parameters += ", ?" + std::to_string(next);
        parameterOf[i] = next++;
    }
    auto statement =
        prepare("INSERT INTO " + entity.table() + " (" + columns + ") VALUES (" + parameters + ")");
    if (!statement) return nullptr;
    Insertion insertion{std::move(*statement), std::move(parameterOf)};
    return &insertions_.emplace(&entity, std::move(insertion)).first->second;
}

SqliteStatement* SaveTransaction::updateOf(ColumnSet columns) {
    const auto found = updates_.find(columns);
    if (found != updates_.end()) return &found->second;
    auto statement = prepare(updateStatement(*columns.first, columns.second));
    if (!statement) return nullptr;
    return &updates_.emplace(std::move(columns), std::move(*statement)).first->second;
}

SaveTransaction::ColumnSet SaveTransaction::presentColumns(const EntityDescription& entity,
                                                           const std::vector<ChangedValue>& values) const {
    ColumnSet columns{&entity, {}};
    columns.second.reserve(values.size());
    for (const auto& [property, value] : values) {
        if (store_.schema_.hasColumn(entity, property)) columns.second.push_back(property);
    }
    return columns;
}

// False when nothing more may be written.
bool SaveTransaction::makeRoom(const EntityDescription& entity, const std::vector<ChangedValue>& values) {
    for (const auto& [property, value] : values) {
        if (failed()) return false;
        if (store_.schema_.hasColumn(entity, property)) continue;
        if (!isDefault(entity.property(property), value)) addColumn(entity, property);
    }
    return !failed();
}

void SaveTransaction::addColumn(const EntityDescription& entity, PropertyIndex property) {
    const PropertyKind kind = entity.property(property).kind;
    const std::string& column = entity.column(property);
    if (column.empty()) {
        return fail(
            {StoreError::Kind::kInvalid, localizedUtf8("A to-many relationship has no value of its own.")});
    }
    addedColumns_ = true;
    auto alter = prepare("ALTER TABLE " + entity.table() + " ADD COLUMN " + column + " " +
                         std::string(declaredType(kind)));
    if (!alter || !run(*alter)) return;
    // Rows that were there read as the default before, and must not become NULL to queries now.
    if (defaultsToZero(kind)) {
        auto fill = prepare("UPDATE " + entity.table() + " SET " + column + " = 0");
        if (!fill || !run(*fill)) return;
    }
    insertions_.erase(&entity);
    if (store_.schema_.read(*store_.database_) != StoreSchema::Reading::kFits) fail(store_.lastError());
}

void SaveTransaction::fail(StoreError error) {
    if (!error_) error_ = std::move(error);
    if (!std::exchange(isOpen_, false)) return;
    // SQLite has rolled back by itself after some errors; this then has nothing to do.
    static_cast<void>(store_.database_->execute("ROLLBACK"));
    // The schema's number falls back, and another process may raise it to the same one again.
    if (addedColumns_) store_.schema_.forget();
}

}  // namespace corvane
