// Comparisons of the object store with plain SQLite over the same file, by turns and by their minima: what
// else the machine does falls on both.
//
// Counters: "fastest" and "plain" the minima in microseconds, "ratio" one by the other, "cpuRatio" the same
// by processor time, which a slow disk does not level out.
#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/CorvaneModel.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/SqlQuery.h"

namespace corvane {

/// A directory that goes with the object.
class Directory {
  public:
    Directory() : path_((std::filesystem::temp_directory_path() / "corvane-bench-XXXXXX").string()) {
        if (!mkdtemp(path_.data())) throw std::runtime_error("no temporary directory");
    }
    ~Directory() { std::filesystem::remove_all(path_); }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    std::filesystem::path file() const { return std::filesystem::path(path_) / "Plorix.sqlite"; }

  private:
    std::string path_;
};

struct OpenStore {
    explicit OpenStore(const std::filesystem::path& file)
        : coordinator(corvaneModel()), context(coordinator) {
        PersistentStoreDescription description;
        description.file = file;
        if (const auto error = coordinator.addStore(description)) throw std::runtime_error(error->message);
    }
    void save() {
        if (const auto error = context.save()) throw std::runtime_error(error->message);
    }

    PersistentStoreCoordinator coordinator;
    ManagedObjectContext context;
};

/// Another program's connection.
class Plain {
  public:
    explicit Plain(const std::filesystem::path& file) {
        if (sqlite3_open(file.c_str(), &database_) != SQLITE_OK) throw std::runtime_error("not opened");
        registerQueryFunctions(database_);
    }
    ~Plain() {
        for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
        sqlite3_close(database_);
    }
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    void run(const std::string& sql) const {
        if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
    }
    sqlite3_stmt* prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
        statements_.push_back(statement);
        return statement;
    }

  private:
    sqlite3* database_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

/// Steps through all rows and reads every column as it is stored.
inline std::size_t readAll(sqlite3_stmt* statement) {
    std::size_t rows = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
        for (int i = 0, columns = sqlite3_column_count(statement); i < columns; ++i) {
            const int type = sqlite3_column_type(statement, i);
            if (type == SQLITE_INTEGER) benchmark::DoNotOptimize(sqlite3_column_int64(statement, i));
            if (type == SQLITE_FLOAT) benchmark::DoNotOptimize(sqlite3_column_double(statement, i));
            if (type == SQLITE_TEXT) benchmark::DoNotOptimize(sqlite3_column_text(statement, i));
            if (type == SQLITE_BLOB) benchmark::DoNotOptimize(sqlite3_column_blob(statement, i));
        }
    }
    sqlite3_reset(statement);
    return rows;
}

struct Times {
    double wall = 1e9;
    double cpu = 1e9;

    template <class Work>
    double measure(Work work) {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t cpuStart = std::clock();
        work();
        const double cpuTime = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
        const double time = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        cpu = std::min(cpu, cpuTime);
        wall = std::min(wall, time);
        return time;
    }
};

inline void report(benchmark::State& state, const Times& ourTimes, const Times& plainTimes) {
    state.counters["fastest"] = ourTimes.wall * 1e6;
    state.counters["plain"] = plainTimes.wall * 1e6;
    state.counters["ratio"] = ourTimes.wall / plainTimes.wall;
    state.counters["cpuRatio"] = ourTimes.cpu / plainTimes.cpu;
}

template <class Ours, class Other>
void compare(benchmark::State& state, Ours ours, Other plain) {
    Times ourTimes;
    Times plainTimes;
    for ([[maybe_unused]] auto step : state) {
        state.SetIterationTime(ourTimes.measure(ours));
        plainTimes.measure(plain);
    }
    report(state, ourTimes, plainTimes);
}

}  // namespace corvane
