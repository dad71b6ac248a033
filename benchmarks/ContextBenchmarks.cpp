// The object context beside plain SQLite that runs the same statements over the same file.
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "benchmarks/Comparison.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "platform/store/SqliteStore.h"

namespace corvane {
namespace {

constexpr int kTasks = 100'000;
constexpr int kLists = 50;

void addTasks(ManagedObjectContext& context, int count, const std::vector<GList*>& lists) {
    for (int i = 0; i < count; ++i) {
        auto& task = context.insert<GTask>();
        task.setName(u"Buy milk and bread for tomorrow");
        if (i % 3 == 0) task.setNotes(u"Ask first whether there is one left, then bring it along");
        task.setList(lists[static_cast<std::size_t>(i % kLists)]);
        task.setDisplayOrder(static_cast<std::int16_t>(i % 1000));
        task.setPriority(i % 6 * 10);
        task.setCreatedTimestamp(Date(TimeInterval(600'000'000.5)));
        task.setHasDueDate(true);
        // Every 500th is due.
        task.setDueDate(Date(TimeInterval(i % 500 == 0 ? 700'000'000.0 + i : 800'000'000.0 + i)));
    }
}

std::vector<GList*> addLists(ManagedObjectContext& context) {
    std::vector<GList*> lists;
    for (int i = 0; i < kLists; ++i) {
        lists.push_back(&context.insert<GList>());
        lists.back()->setName(u"List " + std::u16string(1, static_cast<char16_t>(u'A' + i)));
    }
    return lists;
}

const std::filesystem::path& filledStore() {
    static const Directory directory;
    static const std::filesystem::path file = [] {
        OpenStore store(directory.file());
        addTasks(store.context, kTasks, addLists(store.context));
        store.save();
        return directory.file();
    }();
    return file;
}

FetchRequest dueTasks(double before) {
    FetchRequest request;
    request.entityName = GTask::kEntityName;
    request.predicate = fixedPredicate(
        u"removed == NO AND list.removed == NO AND completed == NO AND hasDueDate == YES AND dueDate < %@",
        {Value(Date(TimeInterval(before)))});
    request.sortDescriptors = {
        {"priority", false},
        {"dueDate"         },
        {"displayOrder"}
    };
    return request;
}

// What a context runs for the request: whole rows.
sqlite3_stmt* prepareRequest(Plain& plain, SqliteStore& store, const FetchRequest& request) {
    const auto hasColumn = [](const EntityDescription&, PropertyIndex) { return true; };
    std::string error;
    const auto query = sqlQueryForRequest(request, corvaneModel(), hasColumn, error);
    if (!query) throw std::runtime_error(error);
    const EntityDescription& entity = *corvaneModel().entity(GTask::kEntityName);
    sqlite3_stmt* statement =
        plain.prepare("SELECT " + store.selectList(entity).text + " FROM ZGTASK t0" + query->joins +
                      " WHERE " + query->where + " ORDER BY " + query->orderBy);
    int parameter = 0;
    for (const Value& value : query->parameters) {
        ++parameter;
        if (const auto* integer = std::get_if<std::int64_t>(&value)) {
            sqlite3_bind_int64(statement, parameter, *integer);
        } else if (const auto* real = std::get_if<double>(&value)) {
            sqlite3_bind_double(statement, parameter, *real);
        }
    }
    return statement;
}

std::size_t countOf(const ManagedObjectContext::FetchResult& result) {
    return std::get<std::vector<ManagedObject*>>(result).size();
}

// Rows are in memory already and are filled afresh.
void fetchAgain(benchmark::State& state) {
    OpenStore store(filledStore());
    Plain plain(filledStore());
    const FetchRequest request = dueTasks(static_cast<double>(state.range(0)));
    sqlite3_stmt* statement = prepareRequest(plain, *store.coordinator.store(), request);
    const std::size_t rows = countOf(store.context.executeFetch(request));
    compare(
        state, [&] { benchmark::DoNotOptimize(store.context.executeFetch(request)); },
        [&] {
            if (readAll(statement) != rows) state.SkipWithError("the two ways differ");
        });
    state.counters["rows"] = static_cast<double>(rows);
}
constexpr std::int64_t kTwoHundred = 750'000'000;
constexpr std::int64_t kAll = 900'000'000;
BENCHMARK(fetchAgain)->Arg(kTwoHundred)->Arg(kAll)->UseManualTime()->Unit(benchmark::kMicrosecond);

// Objects are made; opening the store is left out.
void fetchFirst(benchmark::State& state) {
    Plain plain(filledStore());
    OpenStore kept(filledStore());
    const FetchRequest request = dueTasks(static_cast<double>(state.range(0)));
    sqlite3_stmt* statement = prepareRequest(plain, *kept.coordinator.store(), request);
    std::unique_ptr<ManagedObjectContext> context;
    compare(
        state,
        [&] {
            context = std::make_unique<ManagedObjectContext>(kept.coordinator);
            benchmark::DoNotOptimize(context->executeFetch(request));
        },
        [&] {
            context.reset();
            readAll(statement);
        });
}
BENCHMARK(fetchFirst)->Arg(kTwoHundred)->Arg(kAll)->UseManualTime()->Unit(benchmark::kMicrosecond);

// "plain" is the same fetch in a context without changes.
void fetchWithUnsavedChanges(benchmark::State& state) {
    OpenStore store(filledStore());
    OpenStore unchanged(filledStore());
    FetchRequest all;
    all.fetchLimit = static_cast<std::size_t>(state.range(0));
    for (GTask* task : store.context.fetch<GTask>(all)) task->setDueDate(Date(TimeInterval(700'000'000.0)));
    const FetchRequest request = dueTasks(static_cast<double>(kTwoHundred));
    compare(
        state, [&] { benchmark::DoNotOptimize(store.context.executeFetch(request)); },
        [&] { benchmark::DoNotOptimize(unchanged.context.executeFetch(request)); });
    state.counters["rows"] = static_cast<double>(countOf(store.context.executeFetch(request)));
}
BENCHMARK(fetchWithUnsavedChanges)->Arg(1)->Arg(100)->UseManualTime()->Unit(benchmark::kMicrosecond);

void saveOneChange(benchmark::State& state, const char* synchronous) {
    const Directory directory;
    OpenStore store(directory.file());
    addTasks(store.context, 1000, addLists(store.context));
    store.save();
    Plain plain(directory.file());
    const std::string pragma = std::string("PRAGMA synchronous = ") + synchronous;
    plain.run(pragma);
    std::get<SqliteStatement>(store.coordinator.store()->prepare(pragma)).step();
    sqlite3_stmt* statements[] = {
        plain.prepare("BEGIN IMMEDIATE"),
        plain.prepare("UPDATE ZGTASK SET ZCOMPLETED = 1 - ZCOMPLETED, Z_OPT = Z_OPT + 1 "
                      "WHERE Z_PK = 500 AND Z_OPT > 0"),
        plain.prepare("COMMIT"),
    };
    FetchRequest one;
    one.predicate = fixedPredicate(u"displayOrder == 7");
    GTask& task = *store.context.fetch<GTask>(one).front();
    compare(
        state,
        [&] {
            task.setCompleted(!task.completed());
            store.save();
        },
        [&] {
            for (sqlite3_stmt* statement : statements) {
                sqlite3_step(statement);
                sqlite3_reset(statement);
            }
        });
}
BENCHMARK_CAPTURE(saveOneChange, FULL, "FULL")->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveOneChange, OFF, "OFF")->UseManualTime()->Unit(benchmark::kMicrosecond);

// The same rows, each column bound to what the other file has.
void insertPlainly(Plain& plain, const std::filesystem::path& source, const std::string& columns) {
    Plain reader(source);
    sqlite3_stmt* select = reader.prepare("SELECT " + columns + " FROM ZGTASK");
    std::string parameters = "?";
    for (int i = sqlite3_column_count(select); i > 1; --i) parameters += ",?";
    sqlite3_stmt* insert = plain.prepare("INSERT INTO ZGTASK (" + columns + ") VALUES (" + parameters + ")");
    sqlite3_step(select);
    plain.run("BEGIN IMMEDIATE");
    for (int key = 1; key <= kTasks; ++key) {
        for (int i = sqlite3_column_count(select); i > 0; --i) {
            sqlite3_bind_value(insert, i, sqlite3_column_value(select, i - 1));
        }
        sqlite3_bind_int64(insert, 1, key);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    plain.run("UPDATE Z_PRIMARYKEY SET Z_MAX = 100000 WHERE Z_NAME = 'GTask'; COMMIT");
}

void addManyAndSave(benchmark::State& state) {
    std::string columns = "Z_PK, Z_ENT, Z_OPT";
    const EntityDescription& entity = *corvaneModel().entity(GTask::kEntityName);
    for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
        if (entity.property(i).hasColumn()) columns += ", " + entity.column(i);
    }
    compare(
        state,
        [&] {
            const Directory directory;
            OpenStore store(directory.file());
            addTasks(store.context, kTasks, addLists(store.context));
            store.save();
        },
        [&] {
            const Directory directory;
            { OpenStore made(directory.file()); }
            Plain plain(directory.file());
            plain.run("PRAGMA synchronous = FULL");
            insertPlainly(plain, filledStore(), columns);
        });
}
BENCHMARK(addManyAndSave)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace corvane
