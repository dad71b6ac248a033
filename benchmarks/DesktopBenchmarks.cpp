// The desktop program beside an empty window of the same toolkit and size, in turn; one refresh up to painted
// rows beside an empty repaint; and a minute in which nothing happens.
//
// Runs on the display at hand, else without one. A text anywhere costs a Qt program its fonts, which the
// empty window never loads.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <QApplication>
#include <QImage>

#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/WidgetWindow.h"
#include "apps/host/ProgramEnvironment.h"
#include "apps/host/WidgetHost.h"
#include "model/GSData.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kNow = "2024-03-05T12:00:00Z";
constexpr int kRuns = 25;

// Every 500th task is due today or was so before.
constexpr const char* kFill = R"sql(
BEGIN;
INSERT INTO ZGUSER (Z_PK, Z_ENT, Z_OPT, ZACCOUNTTYPE, ZDISPLAYORDER, ZNAME)
    SELECT 1, Z_ENT, 1, 0, 0, 'Me' FROM Z_PRIMARYKEY WHERE Z_NAME = 'GUser';
INSERT INTO ZGLIST (Z_PK, Z_ENT, Z_OPT, ZNAME, ZUSER, ZDISPLAYORDER, ZREMOVED, ZISISOLATED)
    SELECT 1, Z_ENT, 1, 'Home', 1, 0, 0, 0 FROM Z_PRIMARYKEY WHERE Z_NAME = 'GList';
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000)
INSERT INTO ZGTASK (Z_PK, Z_ENT, Z_OPT, ZNAME, ZLIST, ZDISPLAYORDER, ZPRIORITY, ZREMOVED, ZCOMPLETED,
                    ZHASDUEDATE, ZHASDUETIME, ZDUEDATE, ZALERTREPEAT, ZNOTES)
    SELECT i, Z_ENT, 1, 'Call and write number ' || i, 1, i % 30000, i % 6 * 10, 0, i % 500 <> 0 AND i % 2,
           1, i % 1000 = 0, 731332800 + CASE WHEN i % 500 = 0 THEN -86400 * (i % 7) ELSE 86400 * (1 + i % 365) END,
           0, 'Ask first whether there is one left'
    FROM n, Z_PRIMARYKEY WHERE Z_NAME = 'GTask';
UPDATE Z_PRIMARYKEY SET Z_MAX = CASE Z_NAME WHEN 'GTask' THEN 100000 ELSE 1 END;
COMMIT;
PRAGMA wal_checkpoint;
)sql";

class Store {
  public:
    Store() : directory_(std::filesystem::temp_directory_path() / "corvane-desktop-benchmark") {
        std::filesystem::remove_all(directory_);
        Environment environment;
        environment.useContainerDirectory(directory_);
        const EnvironmentScope scope(environment);
        { GSData().launch(); }
        sqlite3* database = nullptr;
        sqlite3_open((directory_ / kStoreFileName).c_str(), &database);
        const int result = sqlite3_exec(database, kFill, nullptr, nullptr, nullptr);
        sqlite3_close(database);
        if (result != SQLITE_OK) throw std::runtime_error("the store cannot be filled");
    }
    ~Store() { std::filesystem::remove_all(directory_); }

    const std::filesystem::path& directory() const { return directory_; }
    std::vector<std::string> arguments(const char* program) const {
        return {program, "--container", directory_.string(), "--now", kNow};
    }

  private:
    std::filesystem::path directory_;
};

const Store& store() {
    static const Store store;
    return store;
}

pid_t start(const std::vector<std::string>& arguments) {
    std::vector<char*> words;
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    pid_t process = -1;
    if (posix_spawn(&process, words[0], nullptr, nullptr, words.data(), environ) != 0) {
        throw std::runtime_error("cannot run " + arguments.front());
    }
    return process;
}

/// The best of several runs.
struct Best {
    double milliseconds = 1e9;
    double mebibytes = 1e9;

    void take(const std::vector<std::string>& arguments) {
        const Clock::time_point begin = Clock::now();
        const pid_t process = start(arguments);
        int status = 0;
        rusage usage{};
        wait4(process, &status, 0, &usage);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error(arguments.front());
        const std::chrono::duration<double, std::milli> time = Clock::now() - begin;
        milliseconds = std::min(milliseconds, time.count());
        mebibytes = std::min(mebibytes, static_cast<double>(usage.ru_maxrss) / 1024);
    }
};

void firstFrame(benchmark::State& state) {
    Best empty, withText, widget;
    for (auto _ : state) {
        for (int i = 0; i < kRuns; ++i) {
            empty.take({EMPTY_WINDOW});
            withText.take({EMPTY_WINDOW, "text"});
            widget.take(store().arguments(DESKTOP_START));
        }
    }
    state.counters["empty_ms"] = empty.milliseconds;
    state.counters["text_ms"] = withText.milliseconds;
    state.counters["widget_ms"] = widget.milliseconds;
    state.counters["ratio"] = widget.milliseconds / empty.milliseconds;
    state.counters["ratio_text"] = widget.milliseconds / withText.milliseconds;
    state.counters["more_MiB"] = widget.mebibytes - empty.mebibytes;
    state.counters["more_than_text_MiB"] = widget.mebibytes - withText.mebibytes;
}
BENCHMARK(firstFrame)->Iterations(1)->Unit(benchmark::kMillisecond);

void draw(QWidget& window, QImage& image) { window.render(&image); }

void refreshToPaintedRows(benchmark::State& state) {
    setUpProgramEnvironment({store().directory(), kNow});
    QtTextMeasuring measuring{WidgetFonts(QApplication::font())};
    WidgetHost host({}, measuring);
    TaskActions actions;
    WidgetWindow window(host, measuring, actions);
    host.refresh();
    window.showRefresh();
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        host.refresh();
        window.showRefresh();
        draw(window, image);
    }
    state.counters["rows"] = static_cast<double>(window.rows().size());
}
BENCHMARK(refreshToPaintedRows)->Unit(benchmark::kMillisecond);

void emptyRepaint(benchmark::State& state) {
    QWidget window;
    window.resize(359, 650);
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) draw(window, image);
}
BENCHMARK(emptyRepaint)->Unit(benchmark::kMillisecond);

/// What a process has used so far.
struct Usage {
    double wakeUps = 0;       ///< voluntary context switches of its first thread
    double milliseconds = 0;  ///< of processor time, all threads

    static Usage of(pid_t process) {
        const std::string directory = "/proc/" + std::to_string(process);
        Usage usage;
        std::ifstream status(directory + "/status");
        for (std::string word; status >> word;) {
            if (word == "voluntary_ctxt_switches:") status >> usage.wakeUps;
        }
        std::ifstream schedule(directory + "/schedstat");
        double nanoseconds = 0;
        schedule >> nanoseconds;
        usage.milliseconds = nanoseconds / 1e6;
        return usage;
    }
};

void pauseFor(std::chrono::seconds time) {
    const timespec pause{time.count(), 0};
    nanosleep(&pause, nullptr);
}

void idleMinute(benchmark::State& state) {
    const pid_t process = start(store().arguments(DESKTOP_PROGRAM));
    pauseFor(std::chrono::seconds(5));
    const Usage before = Usage::of(process);
    for (auto _ : state) pauseFor(std::chrono::seconds(60));
    const Usage after = Usage::of(process);
    if (waitpid(process, nullptr, WNOHANG) != 0) throw std::runtime_error("the program has ended");
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    state.counters["wake_ups"] = after.wakeUps - before.wakeUps;
    state.counters["cpu_ms"] = after.milliseconds - before.milliseconds;
}
BENCHMARK(idleMinute)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace corvane

int main(int argumentCount, char** arguments) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    benchmark::Initialize(&argumentCount, arguments);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication application(argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
