// The whole process `corvane today` beside a minimal program over the same store, in turn.
//
// Compared by the fastest runs: what else the machine does falls on both. Memory is the highest resident size
// that the system saw, and this program stays smaller than the two, so that its own is not taken for theirs.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/GSData.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

constexpr const char* kNow = "2024-03-05T12:00:00Z";
constexpr const char* kTomorrow = "731376000";  // 2024-03-06 00:00 UTC

// 200 tasks are due, and the first twenty of them today at a time of day. Of the others half are completed, a
// fifth has no due date, the rest is due later.
constexpr const char* kFill = R"sql(
INSERT INTO ZGUSER (Z_PK, Z_ENT, Z_OPT, ZACCOUNTTYPE, ZDISPLAYORDER, ZNAME)
    SELECT 1, Z_ENT, 1, 0, 0, 'Me' FROM Z_PRIMARYKEY WHERE Z_NAME = 'GUser';
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50)
INSERT INTO ZGLIST (Z_PK, Z_ENT, Z_OPT, ZNAME, ZUSER, ZDISPLAYORDER, ZREMOVED, ZISISOLATED)
    SELECT i, Z_ENT, 1, 'List ' || i, 1, i - 1, i = 50, i = 49
    FROM n, Z_PRIMARYKEY WHERE Z_NAME = 'GList';
WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < $COUNT)
INSERT INTO ZGTASK (Z_PK, Z_ENT, Z_OPT, ZNAME, ZLIST, ZDISPLAYORDER, ZPRIORITY, ZREMOVED, ZCOMPLETED,
                    ZHASDUEDATE, ZHASDUETIME, ZDUEDATE, ZALERTREPEAT, ZNOTES)
    SELECT i + 1, Z_ENT, 1, 'Call and write number ' || i, 1 + i % 48, i / 48 % 30000,
           CASE WHEN i % ($COUNT / 20) = 0 THEN 70 ELSE i * 7 % 6 * 10 END, 0,
           i % ($COUNT / 200) <> 0 AND i % 2, i % ($COUNT / 200) = 0 OR i % 5 <> 0,
           i % 3 = 0 OR i % ($COUNT / 20) = 0,
           CASE WHEN i % ($COUNT / 20) = 0 THEN 731332800 + i % 7 * 600
                WHEN i % ($COUNT / 200) = 0 THEN 731332800 - i * 31 % 60 * 86400 + i * 17 % 600 * 60
                ELSE 731332800 + (1 + i % 365) * 86400 END,
           0, CASE WHEN i % 10 < 3 THEN 'Ask first whether there is one left' END
    FROM n, Z_PRIMARYKEY WHERE Z_NAME = 'GTask';
UPDATE Z_PRIMARYKEY SET Z_MAX = CASE Z_NAME WHEN 'GUser' THEN 1 WHEN 'GList' THEN 50 ELSE $COUNT END;
)sql";

std::string filled(std::string sql, const std::string& count) {
    constexpr std::string_view kName = "$COUNT";
    for (std::size_t at = 0; (at = sql.find(kName)) != std::string::npos;)
        sql.replace(at, kName.size(), count);
    return sql;
}

void makeStore(const std::filesystem::path& directory, std::int64_t tasks) {
    Environment environment;
    environment.containerDirectory = directory;
    const EnvironmentScope scope(environment);
    {
        GSData data;
        data.launch();
    }
    sqlite3* database = nullptr;
    sqlite3_open((directory / kStoreFileName).c_str(), &database);
    const std::string sql = "BEGIN;" + filled(kFill, std::to_string(tasks)) + "COMMIT; PRAGMA wal_checkpoint";
    char* error = nullptr;
    if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
        throw std::runtime_error(error);
    }
    sqlite3_close(database);
}

// In a process of its own, which takes its memory with it.
void makeStoreElsewhere(const std::filesystem::path& directory, std::int64_t tasks) {
    const pid_t maker = fork();
    if (maker == 0) {
        makeStore(directory, tasks);
        _exit(EXIT_SUCCESS);
    }
    int status = 0;
    if (waitpid(maker, &status, 0) != maker || status != 0) throw std::runtime_error("no store");
}

class Stores {
  public:
    ~Stores() { std::filesystem::remove_all(root_); }

    const std::filesystem::path& directoryOf(std::int64_t tasks) {
        std::filesystem::path& directory = directories_[tasks];
        if (directory.empty()) {
            directory = root_ / std::to_string(tasks);
            std::filesystem::create_directory(directory);
            makeStoreElsewhere(directory, tasks);
        }
        return directory;
    }

  private:
    static std::filesystem::path makeRoot() {
        std::string name = (std::filesystem::temp_directory_path() / "corvane-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
        return name;
    }

    std::filesystem::path root_ = makeRoot();
    std::map<std::int64_t, std::filesystem::path> directories_;
};

struct Run {
    double wallSeconds = 1e9;
    double processorSeconds = 1e9;
    double residentMebibytes = 0;

    /// The fastest, and the largest.
    void take(const Run& other) {
        wallSeconds = std::min(wallSeconds, other.wallSeconds);
        processorSeconds = std::min(processorSeconds, other.processorSeconds);
        residentMebibytes = std::max(residentMebibytes, other.residentMebibytes);
    }
};

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

class OutputToNowhere {
  public:
    OutputToNowhere() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~OutputToNowhere() { posix_spawn_file_actions_destroy(&actions_); }
    OutputToNowhere(const OutputToNowhere&) = delete;
    OutputToNowhere& operator=(const OutputToNowhere&) = delete;
    const posix_spawn_file_actions_t* actions() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

Run run(std::vector<std::string> words) {
    static const OutputToNowhere output;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = -1;
    int status = 0;
    rusage usage{};
    const auto start = std::chrono::steady_clock::now();
    if (posix_spawn(&process, arguments[0], output.actions(), nullptr, arguments.data(), environ) != 0 ||
        wait4(process, &status, 0, &usage) != process || status != 0) {
        throw std::runtime_error(words[0] + " failed");
    }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    return {wall.count(), secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024};
}

void today(benchmark::State& state) {
    static Stores stores;
    const std::filesystem::path& directory = stores.directoryOf(state.range(0));
    const std::vector<std::string> program{CORVANE_PROGRAM, "--container", directory.string(),
                                           "--now",         kNow,          "today"};
    const std::vector<std::string> minimal{MINIMAL_PROGRAM, (directory / kStoreFileName).string(), kTomorrow};
    Run fastest;
    Run fastestMinimal;
    for ([[maybe_unused]] auto step : state) {
        const Run latest = run(program);
        state.SetIterationTime(latest.wallSeconds);
        fastest.take(latest);
        fastestMinimal.take(run(minimal));
    }
    state.counters["fastest_ms"] = fastest.wallSeconds * 1e3;
    state.counters["minimal_ms"] = fastestMinimal.wallSeconds * 1e3;
    state.counters["ratio"] = fastest.wallSeconds / fastestMinimal.wallSeconds;
    state.counters["cpu_ratio"] = fastest.processorSeconds / fastestMinimal.processorSeconds;
    state.counters["MiB"] = fastest.residentMebibytes;
    state.counters["minimal_MiB"] = fastestMinimal.residentMebibytes;
}

BENCHMARK(today)->ArgName("tasks")->Arg(1'000)->Arg(10'000)->Arg(100'000)->UseManualTime()->MinTime(2)->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace corvane
