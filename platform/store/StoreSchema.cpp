#include "platform/store/StoreSchema.h"

#include <sqlite3.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/store/SqliteDatabase.h"

namespace corvane {

namespace {

// SQLITE_OK when the file has the table or column, SQLITE_ERROR when not, anything else when it cannot be
// read.
int look(SqliteDatabase& database, const std::string& table, const char* column = nullptr) {
    return sqlite3_table_column_metadata(database.handle(), "main", table.c_str(), column, nullptr, nullptr,
                                         nullptr, nullptr, nullptr);
}

bool has(SqliteDatabase& database, const std::string& table, const char* column = nullptr) {
    return look(database, table, column) == SQLITE_OK;
}

bool hasRowColumns(SqliteDatabase& database, const std::string& table) {
    constexpr const char* kRowColumns[] = {"Z_PK", "Z_ENT", "Z_OPT"};
    return std::ranges::all_of(kRowColumns, [&](const char* column) { return has(database, table, column); });
}

using NumbersByName = std::map<std::string, std::int64_t, std::less<>>;

// The numbers of all entities. Running the statement makes SQLite look at the schema afresh, on which rests
// what it tells of tables and columns afterwards.
std::optional<NumbersByName> entityNumbers(SqliteDatabase& database) {
    auto prepared = database.prepare("SELECT Z_NAME, Z_ENT FROM Z_PRIMARYKEY ORDER BY Z_ENT");
    auto* statement = std::get_if<SqliteStatement>(&prepared);
    if (!statement) return std::nullopt;
    NumbersByName numbers;
    SqliteStatement::Step step = statement->step();
    for (; step == SqliteStatement::Step::kRow; step = statement->step()) {
        numbers.emplace(statement->utf8(0), statement->integer(1));
    }
    if (step == SqliteStatement::Step::kError) return std::nullopt;
    return numbers;
}

// The numbers of the model's entities in its order; none and the reason unless the file is a store of it.
std::optional<std::vector<std::int64_t>> numbersOf(SqliteDatabase& database, const ManagedObjectModel& model,
                                                   StoreSchema::Reading& reading) {
    const int code = look(database, "Z_PRIMARYKEY", "Z_NAME");
    const std::optional<NumbersByName> found = code == SQLITE_OK ? entityNumbers(database) : std::nullopt;
    reading = found || code == SQLITE_ERROR ? StoreSchema::Reading::kForeign : StoreSchema::Reading::kFailed;
    if (!found || !has(database, "Z_METADATA", "Z_UUID")) return std::nullopt;
    std::vector<std::int64_t> numbers;
    for (const EntityDescription& entity : model.entities()) {
        const auto number = found->find(entity.name());
        if (number == found->end() || !hasRowColumns(database, entity.table())) return std::nullopt;
        numbers.push_back(number->second);
    }
    reading = StoreSchema::Reading::kFits;
    return numbers;
}

// Moves, without a look into the file, when the connection's last read met a commit of anybody.
std::uint32_t noticedCommits(SqliteDatabase& database) {
    std::uint32_t version = 0;
    sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

}  // namespace

StoreSchema::StoreSchema(const ManagedObjectModel& model)
    : model_(&model), tables_(model.entities().size()) {}

StoreSchema::Reading StoreSchema::recognise(SqliteDatabase& database, const ManagedObjectModel& model) {
    Reading reading = Reading::kFailed;
    numbersOf(database, model, reading);
    return reading;
}

StoreSchema::Reading StoreSchema::read(SqliteDatabase& database) {
    const std::optional<std::int64_t> version = database.integer("PRAGMA schema_version");
    if (!version) return Reading::kFailed;
    Reading reading = Reading::kFailed;
    const auto numbers = numbersOf(database, *model_, reading);
    if (!numbers) return reading;
    for (std::size_t i = 0; i < tables_.size(); ++i) tables_[i].number = (*numbers)[i];
    readColumns(database);
    hasHistory_ = has(database, "ATRANSACTION") || has(database, "ACHANGE");
    version_ = *version;
    noticed_ = noticedCommits(database);
    return reading;
}

void StoreSchema::readIfChanged(SqliteDatabase& database) {
    const std::optional<std::int64_t> version = database.integer("PRAGMA schema_version");
    noticed_ = noticedCommits(database);
    if (version && *version != version_) read(database);
}

void StoreSchema::readIfNoticed(SqliteDatabase& database) {
    if (version_ == kUnknown || noticed_ != noticedCommits(database)) readIfChanged(database);
}

bool StoreSchema::hasColumn(const EntityDescription& entity, PropertyIndex property) const {
    return table(entity).columns[property];
}

bool StoreSchema::isComplete() const {
    return std::ranges::all_of(model_->entities(), [&](const EntityDescription& entity) {
        for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
            if (entity.property(i).hasColumn() && !hasColumn(entity, i)) return false;
        }
        return true;
    });
}

const SelectList& StoreSchema::selectList(const EntityDescription& entity, std::string_view alias) {
    Table& found = tables_[entity.position()];
    const auto list = found.selectLists.find(alias);
    if (list != found.selectLists.end()) return list->second;
    SelectList& made = found.selectLists[std::string(alias)];
    fill(made, entity, alias);
    return made;
}

const StoreSchema::Table& StoreSchema::table(const EntityDescription& entity) const {
    return tables_[entity.position()];
}

void StoreSchema::fill(SelectList& list, const EntityDescription& entity, std::string_view alias) const {
    const std::string prefix = std::string(alias) + ".";
    list.text = prefix + "Z_PK, " + prefix + "Z_OPT";
    list.properties.clear();
    for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
        if (!hasColumn(entity, i)) continue;
        list.text += ", " + prefix + entity.column(i);
        list.properties.push_back(i);
    }
}

void StoreSchema::readColumns(SqliteDatabase& database) {
    for (const EntityDescription& entity : model_->entities()) {
        Table& table = tables_[entity.position()];
        table.columns.assign(entity.properties().size(), false);
        for (PropertyIndex i = 0; i < table.columns.size(); ++i) {
            table.columns[i] =
                entity.property(i).hasColumn() && has(database, entity.table(), entity.column(i).c_str());
        }
        // In place: callers hold references to the select lists.
        for (auto& [alias, list] : table.selectLists) fill(list, entity, alias);
    }
}

}  // namespace corvane
