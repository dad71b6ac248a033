// The store file against plain SQLite on the same tables in the same run: one saved update, a bulk insert,
// opening. The files lie in the temporary directory; on a memory file system the costs of the processor are
// left.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/CorvaneModel.h"
#include "platform/store/SaveTransaction.h"
#include "platform/store/SqliteStore.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kBulkRows = 100'000;

class Directory {
  public:
    Directory() : path_((fs::temp_directory_path() / "corvane-bench-XXXXXX").string()) {
        if (!mkdtemp(path_.data())) throw std::runtime_error("no temporary directory");
    }
    ~Directory() { fs::remove_all(path_); }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    fs::path file() const { return fs::path(path_) / "Plorix.sqlite"; }

  private:
    std::string path_;
};

const EntityDescription& taskEntity() { return *corvaneModel().entity("GTask"); }

std::unique_ptr<SqliteStore> openedStore(const fs::path& file) {
    PersistentStoreDescription description;
    description.file = file;
    auto opened = SqliteStore::open(description, corvaneModel());
    if (const auto* error = std::get_if<StoreError>(&opened)) throw std::runtime_error(error->message);
    return std::move(std::get<0>(opened));
}

// What a new task has: numbers and booleans set, a name, two dates, a list.
std::vector<SaveTransaction::ChangedValue> newTask(std::int64_t order) {
    std::vector<SaveTransaction::ChangedValue> values;
    for (PropertyIndex i = 0; i < taskEntity().properties().size(); ++i) {
        switch (taskEntity().property(i).kind) {
            case PropertyKind::kBoolean:
                values.emplace_back(i, false);
                break;
            case PropertyKind::kInt16:
            case PropertyKind::kInt32:
            case PropertyKind::kInt64:
                values.emplace_back(i, order % 1000);
                break;
            case PropertyKind::kDouble:
                values.emplace_back(i, 0.0);
                break;
            case PropertyKind::kToOne:
                if (taskEntity().property(i).name == "list")
                    values.emplace_back(i, std::int64_t{1 + order % 50});
                break;
            default:
                break;
        }
    }
    const auto set = [&](const char* name, Value value) {
        values.emplace_back(taskEntity().indexOfProperty(name).value(), std::move(value));
    };
    set("name", u"Buy milk and bread for tomorrow");
    set("dueDate", Date(TimeInterval(700'000'000.0 + static_cast<double>(order))));
    set("createdTimestamp", Date(TimeInterval(600'000'000.5)));
    return values;
}

// Plain SQLite, as a program of its own would use it.
class Plain {
  public:
    explicit Plain(const fs::path& file) {
        if (sqlite3_open(file.c_str(), &database_) != SQLITE_OK) throw std::runtime_error("not opened");
        run("PRAGMA synchronous=FULL");
    }
    ~Plain() {
        for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
        sqlite3_close(database_);
    }
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    void run(const char* sql) const {
        if (sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
    }
    sqlite3_stmt* prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr);
        statements_.push_back(statement);
        return statement;
    }
    static void step(sqlite3_stmt* statement) {
        if (sqlite3_step(statement) == SQLITE_ERROR) throw std::runtime_error("a step failed");
        sqlite3_reset(statement);
    }

  private:
    sqlite3* database_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

void bindPlainly(sqlite3_stmt* statement, int parameter, const Value& value) {
    if (const auto* boolean = std::get_if<bool>(&value)) {
        sqlite3_bind_int(statement, parameter, *boolean ? 1 : 0);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        sqlite3_bind_int64(statement, parameter, *integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
        sqlite3_bind_double(statement, parameter, *real);
    } else if (const auto* date = std::get_if<Date>(&value)) {
        sqlite3_bind_double(statement, parameter, date->time_since_epoch().count());
    } else {
        sqlite3_bind_text(statement, parameter, "Buy milk and bread for tomorrow", -1, SQLITE_STATIC);
    }
}

void insertPlainly(Plain& plain, const std::vector<std::vector<SaveTransaction::ChangedValue>>& tasks) {
    std::string columns = "Z_PK, Z_ENT, Z_OPT", parameters = "?, 2, 1";
    for (const auto& [property, value] : tasks.front()) {
        columns += ", " + taskEntity().column(property);
        parameters += ", ?";
    }
    sqlite3_stmt* insert = plain.prepare("INSERT INTO ZGTASK (" + columns + ") VALUES (" + parameters + ")");
    plain.run("BEGIN IMMEDIATE");
    for (std::int64_t key = 1; key <= kBulkRows; ++key) {
        const auto& values = tasks[static_cast<std::size_t>(key) % tasks.size()];
        sqlite3_bind_int64(insert, 1, key);
        for (std::size_t i = 0; i < values.size(); ++i) {
            bindPlainly(insert, static_cast<int>(i) + 2, values[i].second);
        }
        Plain::step(insert);
    }
    plain.run("UPDATE Z_PRIMARYKEY SET Z_MAX = 100000 WHERE Z_ENT = 2; COMMIT");
}

void insertThroughStore(SqliteStore& store,
                        const std::vector<std::vector<SaveTransaction::ChangedValue>>& tasks) {
    SaveTransaction save(store);
    const std::int64_t first = save.takeKeys(taskEntity(), kBulkRows);
    for (std::int64_t key = first; key < first + kBulkRows; ++key) {
        save.insertRow(taskEntity(), key, tasks[static_cast<std::size_t>(key) % tasks.size()]);
    }
    if (save.commit()) throw std::runtime_error("not saved");
}

std::vector<std::vector<SaveTransaction::ChangedValue>> newTasks() {
    std::vector<std::vector<SaveTransaction::ChangedValue>> tasks;
    for (std::int64_t i = 0; i < 1000; ++i) tasks.push_back(newTask(i));
    return tasks;
}

void BM_BulkInsertPlain(benchmark::State& state) {
    const auto tasks = newTasks();
    for (auto _ : state) {
        state.PauseTiming();
        const auto directory = std::make_unique<Directory>();
        openedStore(directory->file());
        auto plain = std::make_unique<Plain>(directory->file());
        state.ResumeTiming();
        insertPlainly(*plain, tasks);
        state.PauseTiming();
        plain.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kBulkRows);
}
BENCHMARK(BM_BulkInsertPlain)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_BulkInsertThroughStore(benchmark::State& state) {
    const auto tasks = newTasks();
    for (auto _ : state) {
        state.PauseTiming();
        const auto directory = std::make_unique<Directory>();
        auto store = openedStore(directory->file());
        state.ResumeTiming();
        insertThroughStore(*store, tasks);
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kBulkRows);
}
BENCHMARK(BM_BulkInsertThroughStore)->Unit(benchmark::kMillisecond)->MinTime(3);

// A file with some tasks, for updates and opening.
struct FilledStore {
    Directory directory;
    FilledStore() {
        const auto store = openedStore(directory.file());
        SaveTransaction save(*store);
        for (std::int64_t key = save.takeKeys(taskEntity(), 1000); key <= 1000; ++key) {
            save.insertRow(taskEntity(), key, newTask(key));
        }
        if (save.commit()) throw std::runtime_error("not saved");
    }
};

void BM_SaveOneUpdatePlain(benchmark::State& state) {
    const FilledStore filled;
    Plain plain(filled.directory.file());
    sqlite3_stmt* begin = plain.prepare("BEGIN IMMEDIATE");
    sqlite3_stmt* update =
        plain.prepare("UPDATE ZGTASK SET ZCOMPLETED = ?, Z_OPT = ? WHERE Z_PK = ? AND Z_OPT = ?");
    sqlite3_stmt* commit = plain.prepare("COMMIT");
    std::int64_t version = 1;
    for (auto _ : state) {
        Plain::step(begin);
        sqlite3_bind_int64(update, 1, version & 1);
        sqlite3_bind_int64(update, 2, version + 1);
        sqlite3_bind_int64(update, 3, 500);
        sqlite3_bind_int64(update, 4, version++);
        Plain::step(update);
        Plain::step(commit);
    }
}
BENCHMARK(BM_SaveOneUpdatePlain)->Unit(benchmark::kMicrosecond);

void BM_SaveOneUpdateThroughStore(benchmark::State& state) {
    const FilledStore filled;
    const auto store = openedStore(filled.directory.file());
    const PropertyIndex completed = taskEntity().indexOfProperty("completed").value();
    std::int64_t version = 1;
    for (auto _ : state) {
        SaveTransaction save(*store);
        const auto written = save.updateRow(taskEntity(), 500, version,
                                            {
                                                {completed, (version & 1) != 0}
        });
        if (!written || save.commit()) throw std::runtime_error("not saved");
        version = *written;
    }
}
BENCHMARK(BM_SaveOneUpdateThroughStore)->Unit(benchmark::kMicrosecond);

void BM_OpenPlain(benchmark::State& state) {
    const FilledStore filled;
    for (auto _ : state) {
        Plain plain(filled.directory.file());
        sqlite3_stmt* count = plain.prepare("SELECT Z_UUID FROM Z_METADATA");
        benchmark::DoNotOptimize(sqlite3_step(count));
    }
}
BENCHMARK(BM_OpenPlain)->Unit(benchmark::kMicrosecond);

void BM_OpenStore(benchmark::State& state) {
    const FilledStore filled;
    for (auto _ : state) benchmark::DoNotOptimize(openedStore(filled.directory.file()));
}
BENCHMARK(BM_OpenStore)->Unit(benchmark::kMicrosecond);

void BM_DataVersion(benchmark::State& state) {
    const FilledStore filled;
    const auto store = openedStore(filled.directory.file());
    for (auto _ : state) benchmark::DoNotOptimize(store->dataVersion());
}
BENCHMARK(BM_DataVersion)->Unit(benchmark::kMicrosecond);

void BM_SelectListAndStatement(benchmark::State& state) {
    const FilledStore filled;
    const auto store = openedStore(filled.directory.file());
    for (auto _ : state) {
        const std::string sql =
            "SELECT " + store->selectList(taskEntity()).text + " FROM ZGTASK t0 WHERE t0.Z_PK = ?";
        benchmark::DoNotOptimize(store->prepare(sql));
    }
}
BENCHMARK(BM_SelectListAndStatement)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvane
