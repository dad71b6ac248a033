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

// Moves, without a look into the file, when the connection's last read met a commit of anybody.
std::uint32_t noticedCommits(SqliteDatabase& database) {
    std::uint32_t version = 0;
    sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

}  // namespace

StoreSchema::StoreSchema(const ManagedObjectModel& model)
    : model_(&model), tables_(model.entities().size()) {}

StoreSchema::Reading StoreSchema::read(SqliteDatabase& database) {
    const std::optional<std::int64_t> version = database.integer("PRAGMA schema_version");
    if (!version) return Reading::kFailed;
    const Reading reading = readTables(database);
    if (reading != Reading::kFits) return reading;
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

StoreSchema::Reading StoreSchema::readTables(SqliteDatabase& database) {
    const int code = look(database, "Z_PRIMARYKEY", "Z_NAME");
    if (code == SQLITE_ERROR) return Reading::kForeign;
    const std::optional<NumbersByName> numbers = code == SQLITE_OK ? entityNumbers(database) : std::nullopt;
    if (!numbers) return Reading::kFailed;
    if (!has(database, "Z_METADATA", "Z_UUID")) return Reading::kForeign;
    std::vector<Table> read;
    for (const EntityDescription& entity : model_->entities()) {
        const auto number = numbers->find(entity.name());
        if (number == numbers->end() || !hasRowColumns(database, entity.table())) return Reading::kForeign;
        Table& table = read.emplace_back();
        table.number = number->second;
        for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
            table.columns.push_back(entity.property(i).hasColumn() &&
                                    has(database, entity.table(), entity.column(i).c_str()));
        }
    }
    hasHistory_ = has(database, "ATRANSACTION") || has(database, "ACHANGE");
    keep(std::move(read));
    return Reading::kFits;
}

// In place: callers hold references to the select lists.
void StoreSchema::keep(std::vector<Table> read) {
    for (std::size_t i = 0; i < read.size(); ++i) {
        tables_[i].number = read[i].number;
        tables_[i].columns = std::move(read[i].columns);
        for (auto& [alias, list] : tables_[i].selectLists) fill(list, model_->entities()[i], alias);
    }
}

}  // namespace corvane
