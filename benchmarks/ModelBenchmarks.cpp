// Changes to long lists of tasks, each beside plain SQLite that does the same to a copy of the same file.
//
// Counters: "plain" the minimum of SQLite's times in milliseconds, "ratio" minimum against minimum,
// "cpuRatio" the same by processor time, which a slow disk does not level out.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "model/GSData.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

constexpr Date kNow{TimeInterval(731332800)};
constexpr int kRounds = 15;

Environment environmentOf(const std::filesystem::path& directory) {
    Environment environment;
    environment.now = [] { return kNow; };
    environment.timeZone = "UTC";
    environment.locale = "en_US";
    environment.containerDirectory = directory;
    return environment;
}

class Directory {
  public:
    Directory() {
        std::string name = (std::filesystem::temp_directory_path() / "corvane-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
        path_ = name;
    }
    ~Directory() { std::filesystem::remove_all(path_); }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// A store with lists of tasks in sound order; from `width` on, each task stands under the one that many
/// places before it.
class Store {
  public:
    Store(int lists, int tasks, int width) : scope_(environmentOf(directory_.path())) {
        data_ = std::make_unique<GSData>();
        data_->launch();
        auto& account = context().insert<GUser>();
        for (int i = 0; i < lists; ++i) {
            auto& list = context().insert<GList>();
            list.setUser(&account);
            list.setDisplayOrder(static_cast<std::int16_t>(i));
            fill(list, tasks, width);
        }
        save();
        std::filesystem::copy_file(directory_.path() / kStoreFileName, copy());
        std::filesystem::copy_file(directory_.path() / (std::string(kStoreFileName) + "-wal"),
                                   copy().string() + "-wal");
        reopen();
    }

    GSData& data() { return *data_; }
    ManagedObjectContext& context() { return data_->viewContext(); }
    GList& list() { return *lists().front(); }
    std::vector<GList*> lists() {
        FetchRequest request;
        request.sortDescriptors = {{"displayOrder"}};
        return context().fetch<GList>(request);
    }
    std::filesystem::path copy() const { return directory_.path() / "Plain.sqlite"; }

    void save() {
        if (const auto error = context().save()) throw std::runtime_error(error->message);
    }
    void reopen() {
        data_ = std::make_unique<GSData>();
        data_->launch();
    }

  private:
    void fill(GList& list, int tasks, int width) {
        std::vector<GTask*> made;
        for (int i = 0; i < tasks; ++i) {
            auto& task = context().insert<GTask>();
            task.setName(u"Task of a long list");
            task.setList(&list);
            task.setDisplayOrder(static_cast<std::int16_t>(i));
            task.setHasDueDate(i % 2 == 0);
            if (i % 2 == 0) task.setDueDate(kNow + TimeInterval(i * 60.0));
            // Blocks of `width` tasks: the first one is a root, the others stand below it.
            if (width > 0 && i % width != 0)
                task.setParentTask(made[static_cast<std::size_t>(i - i % width)]);
            made.push_back(&task);
        }
    }

    Directory directory_;
    EnvironmentScope scope_;
    std::unique_ptr<GSData> data_;
};

class PlainSqlite {
  public:
    explicit PlainSqlite(const std::filesystem::path& file) {
        sqlite3* database = nullptr;
        sqlite3_open(file.c_str(), &database);
        database_.reset(database);
        run("PRAGMA synchronous = FULL");
        sqlite3_stmt* order = nullptr;
        sqlite3_prepare_v2(database,
                           "SELECT Z_PK, ZDISPLAYORDER FROM ZGTASK WHERE ZREMOVED = 0 AND ZLIST = ? "
                           "ORDER BY ZDISPLAYORDER",
                           -1, &order, nullptr);
        order_.reset(order);
    }

    void run(const std::string& sql) {
        if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_.get()));
        }
    }

    void readOrder(int list) {
        sqlite3_bind_int(order_.get(), 1, list);
        while (sqlite3_step(order_.get()) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_int64(order_.get(), 0) +
                                     sqlite3_column_int64(order_.get(), 1));
        }
        sqlite3_reset(order_.get());
    }
    void shift(int list, int by) {
        run("BEGIN IMMEDIATE; UPDATE ZGTASK SET ZDISPLAYORDER = ZDISPLAYORDER + " + std::to_string(by) +
            ", Z_OPT = Z_OPT + 1 WHERE ZLIST = " + std::to_string(list) + "; COMMIT");
    }

  private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3, Close> database_;
    std::unique_ptr<sqlite3_stmt, Close> order_;
};

struct Times {
    double wall = 1e9, cpu = 1e9;

    template <class Work>
    void measure(Work work) {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t cpuStart = std::clock();
        work();
        wall =
            std::min(wall, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        cpu = std::min(cpu, static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC);
    }
};

/// Runs ours and plain SQLite's work by turns.
template <class Ours, class Plain, class After>
void compare(benchmark::State& state, Ours ours, Plain plain, After after) {
    Times ourTimes;
    Times plainTimes;
    for ([[maybe_unused]] auto step : state) {
        const auto start = std::chrono::steady_clock::now();
        ourTimes.measure(ours);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        plainTimes.measure(plain);
        after();
    }
    state.counters["min"] = ourTimes.wall * 1000;
    state.counters["plain"] = plainTimes.wall * 1000;
    state.counters["ratio"] = ourTimes.wall / plainTimes.wall;
    state.counters["cpuRatio"] = ourTimes.cpu / plainTimes.cpu;
}

void insertAtHead(benchmark::State& state) {
    Store store(1, static_cast<int>(state.range(0)), 0);
    PlainSqlite plain(store.copy());
    GList& list = store.list();
    GTask* task = nullptr;
    compare(
        state,
        [&] {
            task = &GTask::insertNewTaskToList(list, nullptr, nullptr);
            store.save();
        },
        [&] {
            plain.readOrder(1);
            plain.shift(1, 1);
        },
        [&] {
            task->deleteTask(kPurge);
            store.save();
        });
}
BENCHMARK(insertAtHead)
    ->Arg(1000)
    ->Arg(10'000)
    ->Iterations(kRounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void deleteAtHead(benchmark::State& state) {
    Store store(1, static_cast<int>(state.range(0)), 0);
    PlainSqlite plain(store.copy());
    GList& list = store.list();
    GTask* task = list.orderedAllTasks().front();
    compare(
        state,
        [&] {
            task->deleteTask(kPurge);
            store.save();
        },
        [&] {
            plain.readOrder(1);
            plain.shift(1, -1);
        },
        [&] {
            task = &GTask::insertNewTaskToList(list, nullptr, nullptr);
            store.save();
        });
}
BENCHMARK(deleteAtHead)
    ->Arg(1000)
    ->Arg(10'000)
    ->Iterations(kRounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void moveToHead(benchmark::State& state) {
    Store store(1, static_cast<int>(state.range(0)), 0);
    PlainSqlite plain(store.copy());
    GList& list = store.list();
    GTask* task = list.orderedAllTasks().back();
    compare(
        state,
        [&] {
            task->moveToList(list, nullptr, nullptr);
            store.save();
        },
        [&] {
            plain.readOrder(1);
            plain.shift(1, 1);
        },
        [&] { task = list.orderedAllTasks().back(); });
}
BENCHMARK(moveToHead)
    ->Arg(1000)
    ->Arg(10'000)
    ->Iterations(kRounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Warm: the tasks are in memory. Cold: a fresh process has none.
void fixSoundOrders(benchmark::State& state) {
    constexpr int kLists = 100;
    Store store(kLists, static_cast<int>(state.range(0)) / kLists, 10);
    PlainSqlite plain(store.copy());
    const bool isWarm = state.range(1) != 0;
    if (isWarm) store.data().fixDisplayOrders();
    std::size_t statements = 0;
    compare(
        state,
        [&] {
            const std::size_t before = store.context().statementCount();
            if (store.data().fixDisplayOrders() || store.context().hasChanges()) std::abort();
            statements = store.context().statementCount() - before;
        },
        [&] {
            for (int list = 1; list <= kLists; ++list) plain.readOrder(list);
        },
        [&] {
            if (!isWarm) store.reopen();
        });
    state.counters["statements"] = static_cast<double>(statements);
}
BENCHMARK(fixSoundOrders)
    ->ArgNames({"tasks", "warm"})
    ->Args({10'000, 1})
    ->Args({100'000, 1})
    ->Args({100'000, 0})
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void fixUnsoundOrders(benchmark::State& state) {
    constexpr int kLists = 100;
    Store store(kLists, static_cast<int>(state.range(0)) / kLists, 10);
    PlainSqlite plain(store.copy());
    const auto scramble = [&] {
        for (GTask* task : store.context().fetch<GTask>({})) {
            task->setDisplayOrder(static_cast<std::int16_t>(task->displayOrder() + 7));
        }
        store.save();
    };
    scramble();
    compare(
        state,
        [&] {
            store.data().fixDisplayOrders();
            store.save();
        },
        [&] {
            for (int list = 1; list <= kLists; ++list) plain.readOrder(list);
            plain.run("UPDATE ZGTASK SET ZDISPLAYORDER = ZDISPLAYORDER + 1, Z_OPT = Z_OPT + 1");
        },
        scramble);
}
BENCHMARK(fixUnsoundOrders)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// Unsaved work on one tree of tasks, taken back after each round.
template <class Work>
void onTree(benchmark::State& state, Work work) {
    const auto tasks = static_cast<int>(state.range(0));
    Store store(2, tasks + 1, tasks + 1);
    GList& list = *store.lists()[0];
    GList& other = *store.lists()[1];
    for ([[maybe_unused]] auto step : state) {
        GTask& root = *list.orderedAllTasks().front();
        const auto start = std::chrono::steady_clock::now();
        work(root, list, other);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        store.context().rollback();
    }
}

void cloneTree(benchmark::State& state) {
    onTree(state, [](GTask& root, GList&, GList& other) { root.cloneToList(other, nullptr, nullptr); });
}
BENCHMARK(cloneTree)->Arg(100)->Arg(1000)->Arg(10'000)->Iterations(5)->UseManualTime()->Unit(
    benchmark::kMillisecond);

void cloneTreeToUnsoundList(benchmark::State& state) {
    onTree(state, [](GTask& root, GList&, GList& other) {
        other.orderedAllTasks().front()->setDisplayOrder(1);
        root.cloneToList(other, nullptr, nullptr);
    });
}
BENCHMARK(cloneTreeToUnsoundList)
    ->Arg(100)
    ->Arg(1000)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void moveTreeToOtherList(benchmark::State& state) {
    onTree(state, [](GTask& root, GList&, GList& other) { root.moveToList(other, nullptr, nullptr); });
}
BENCHMARK(moveTreeToOtherList)
    ->Arg(500)
    ->Arg(5000)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void moveTreeWithinList(benchmark::State& state) {
    onTree(state, [](GTask& root, GList& list, GList&) {
        GTask& first = GTask::insertNewTaskToList(list, nullptr, nullptr);
        root.moveToList(list, nullptr, nullptr);
        root.moveToList(list, nullptr, &first);
    });
}
BENCHMARK(moveTreeWithinList)
    ->Arg(500)
    ->Arg(5000)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void moveBelowOwnGrandchild(benchmark::State& state) {
    onTree(state, [](GTask& root, GList& list, GList&) {
        const std::vector<GTask*> order = list.orderedAllTasks();
        order[2]->setParentTask(order[1]);
        root.moveToList(list, order[2], nullptr);
    });
}
BENCHMARK(moveBelowOwnGrandchild)
    ->Arg(500)
    ->Arg(5000)
    ->Iterations(2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvane
