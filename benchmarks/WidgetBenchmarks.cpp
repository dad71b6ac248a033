// A warm refresh of the widget, beside plain SQLite stepping through the same tasks of the same file.
//
// Every store holds 200 tasks that the widget counts; the others are completed, undated, deleted or due
// later. A million tasks take part when CORVANE_BENCHMARK_MILLION is set in the environment.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/GSData.h"
#include "platform/foundation/Environment.h"
#include "widget/TodayViewController.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {
namespace {

// 2024-03-05 12:00 UTC.
constexpr Date kNow{TimeInterval(731332800)};
constexpr TimeInterval kDay{86'400};
constexpr std::int64_t kDueTasks = 200;
constexpr std::int64_t kRejectedTasks = 40;

Environment environmentOf(const std::filesystem::path& directory) {
    Environment environment;
    environment.now = [] { return kNow; };
    environment.timeZone = "UTC";
    environment.locale = "en_US";
    environment.containerDirectory = directory;
    return environment;
}

struct Shape {
    std::int64_t tasks = 0;
    std::int64_t isolatedPerMille = 0;  ///< further overdue tasks, in a list that the widget leaves out
    auto operator<=>(const Shape&) const = default;
};

// Fills a store with tasks through the model, a part at a time so that few objects are in memory.
class StoreMaker {
  public:
    StoreMaker(std::filesystem::path directory, Shape shape)
        : directory_(std::move(directory)), shape_(shape) {}

    void make() {
        constexpr std::int64_t kPart = 20'000;
        const EnvironmentScope scope(environmentOf(directory_));
        makeLists();
        for (std::int64_t first = 0; first < shape_.tasks; first += kPart) {
            makeTasks(first, std::min(first + kPart, shape_.tasks));
        }
    }

  private:
    static constexpr int kLists = 50;
    static constexpr int kRemovedList = 0;
    static constexpr int kIsolatedList = 1;

    static void save(GSData& data) {
        if (const auto error = data.viewContext().save()) throw std::runtime_error(error->message);
    }

    void makeLists() {
        GSData data;
        data.launch();
        GUser& user = data.viewContext().insert<GUser>();
        for (int i = 0; i < kLists; ++i) {
            GList& list = data.viewContext().insert<GList>();
            list.setUser(&user);
            list.setName(u"List " + std::u16string(1, static_cast<char16_t>(u'A' + i)));
            list.setDisplayOrder(static_cast<std::int16_t>(i));
            list.setColor(Color::rgb(i / 50.0, 0.5, 0.5));
            list.setRemoved(i == kRemovedList);
            list.setIsIsolated(i == kIsolatedList);
        }
        save(data);
    }

    void makeTasks(std::int64_t first, std::int64_t end) {
        GSData data;
        data.launch();
        FetchRequest request;
        request.sortDescriptors = {{"displayOrder"}};
        lists_ = data.viewContext().fetch<GList>(request);
        for (std::int64_t i = first; i < end; ++i) {
            GTask& task = data.viewContext().insert<GTask>();
            describe(task);
            place(task, i);
        }
        save(data);
    }

    std::int64_t random(std::int64_t end) { return static_cast<std::int64_t>(random_()) % end; }

    void describe(GTask& task) {
        constexpr std::u16string_view kWords[] = {u"Call", u"write", u"Order", u"fetch", u"Pay", u"mend"};
        std::u16string name;
        for (int i = 0; i < 4; ++i) name.append(kWords[random(std::size(kWords))]).append(u" ");
        task.setName(name);
        task.setList(lists_[static_cast<std::size_t>(2 + random(kLists - 2))]);
        task.setDisplayOrder(static_cast<std::int16_t>(random(1000)));
        task.setPriority(static_cast<std::int32_t>(random(6) * 10));
        if (random(10) < 3) task.setNotes(u"Ask first whether there is one left,\nthen bring it along");
    }

    // The tasks that matter lie evenly among all the others.
    void place(GTask& task, std::int64_t i) {
        const std::int64_t step = shape_.tasks / (kDueTasks + kRejectedTasks);
        const std::int64_t special = i % step == 0 ? i / step : kDueTasks + kRejectedTasks;
        if (special < kDueTasks) return setDue(task, -random(60));
        if (special < kDueTasks + kRejectedTasks) return makeRejected(task, special);
        if (random(1000) < shape_.isolatedPerMille) return isolate(task);
        makeOrdinary(task);
    }

    void setDue(GTask& task, std::int64_t days) {
        task.setHasDueDate(true);
        task.setHasDueTime(random(2) == 0);
        task.setDueDate(kNow + kDay * static_cast<double>(days) + TimeInterval(60.0 * double(random(600))));
    }

    void isolate(GTask& task) {
        setDue(task, -random(60));
        task.setList(lists_[kIsolatedList]);
    }

    void makeRejected(GTask& task, std::int64_t special) {
        isolate(task);
        if (special % 3 == 0) task.setList(lists_[kRemovedList]);
        if (special % 3 == 1) task.setName(u"");
    }

    void makeOrdinary(GTask& task) {
        const std::int64_t percentile = random(100);
        if (percentile < 51) setDue(task, -random(365));
        if (percentile < 50) task.setCompleted(true);
        if (percentile == 50) task.setRemoved(true);
        if (percentile >= 71) setDue(task, 1 + random(365));
    }

    std::filesystem::path directory_;
    Shape shape_;
    std::mt19937 random_{7};
    std::vector<GList*> lists_;
};

// Stores are made once a run and go with it.
class Stores {
  public:
    ~Stores() { std::filesystem::remove_all(root_); }

    const std::filesystem::path& directoryOf(Shape shape) {
        std::filesystem::path& directory = directories_[shape];
        if (directory.empty()) {
            directory = root_ / std::to_string(directories_.size());
            std::filesystem::create_directory(directory);
            StoreMaker(directory, shape).make();
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
    std::map<Shape, std::filesystem::path> directories_;
};

// The same tasks and the columns of them that a row shows, by one prepared statement. Colours and accounts of
// lists are left out, as a program that keeps its lists would leave them out.
class PlainSqlite {
  public:
    explicit PlainSqlite(const std::filesystem::path& directory) {
        sqlite3* database = nullptr;
        sqlite3_open((directory / kStoreFileName).c_str(), &database);
        database_.reset(database);
        selectTasks_ = prepare(
            "SELECT t.Z_PK, t.Z_OPT, t.ZNAME, t.ZNOTES, t.ZDUEDATE, t.ZHASDUETIME, t.ZALERTDATE, "
            "t.ZALERTREPEAT, t.ZPRIORITY, t.ZLIST FROM ZGTASK t JOIN ZGLIST l ON l.Z_PK = t.ZLIST "
            "WHERE t.ZREMOVED = 0 AND t.ZNAME IS NOT NULL AND t.ZNAME <> '' AND l.ZREMOVED = 0 "
            "AND l.ZISISOLATED = 0 AND t.ZCOMPLETED = 0 AND t.ZHASDUEDATE = 1 AND t.ZDUEDATE < ?1 "
            "ORDER BY t.ZPRIORITY DESC, t.ZHASDUEDATE DESC, t.ZDUEDATE, t.ZDISPLAYORDER, "
            "l.ZNAME COLLATE NOCASE, t.ZNAME COLLATE NOCASE, t.Z_PK");
        touch_ = prepare("UPDATE ZGTASK SET Z_OPT = Z_OPT + 1 WHERE Z_PK = 1");
    }

    std::size_t select(Date tomorrow) {
        std::size_t rows = 0;
        sqlite3_bind_double(selectTasks_.get(), 1, tomorrow.time_since_epoch().count());
        for (; sqlite3_step(selectTasks_.get()) == SQLITE_ROW; ++rows) {
            const int columns = sqlite3_column_count(selectTasks_.get());
            for (int i = 0; i < columns; ++i) read(i);
        }
        sqlite3_reset(selectTasks_.get());
        return rows;
    }

    /// Commits a change that shows nowhere.
    void commit() {
        if (sqlite3_step(touch_.get()) != SQLITE_DONE) throw std::runtime_error("no commit");
        sqlite3_reset(touch_.get());
    }

  private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

    // As stored: another type would cost a conversion.
    void read(int column) {
        sqlite3_stmt* row = selectTasks_.get();
        switch (sqlite3_column_type(row, column)) {
            case SQLITE_INTEGER:
                return benchmark::DoNotOptimize(sqlite3_column_int64(row, column));
            case SQLITE_FLOAT:
                return benchmark::DoNotOptimize(sqlite3_column_double(row, column));
            case SQLITE_NULL:
                return;
            default:
                return benchmark::DoNotOptimize(sqlite3_column_blob(row, column));
        }
    }

    Statement prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_.get()));
        }
        return Statement(statement);
    }

    std::unique_ptr<sqlite3, Closer> database_;
    Statement selectTasks_;
    Statement touch_;
};

template <class Operation>
double secondsOf(Operation operation) {
    const auto start = std::chrono::steady_clock::now();
    operation();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

enum class Commits { kNone, kBeforeEachRefresh };

// Both ways in turn, compared by their minima: what else the machine does falls on both.
void warmRefresh(benchmark::State& state, Commits commits) {
    static Stores stores;
    const std::filesystem::path& directory = stores.directoryOf({state.range(0), state.range(1)});
    const EnvironmentScope scope(environmentOf(directory));
    GSData data;
    const SharedInstanceScope sharedInstance(data);
    FixedExtensionContext host;
    const FixedAdvanceMeasuring measuring;
    TodayViewController controller(host, measuring);
    controller.viewDidLoad();
    PlainSqlite plain(directory);
    const auto refresh = [&controller] {
        controller.widgetPerformUpdate({});
        benchmark::DoNotOptimize(widgetSnapshot(controller));
    };
    refresh();
    double fastestRefresh = 1e9;
    double fastestSelect = 1e9;
    std::size_t selected = 0;
    for ([[maybe_unused]] auto step : state) {
        if (commits == Commits::kBeforeEachRefresh) plain.commit();
        const double seconds = secondsOf(refresh);
        state.SetIterationTime(seconds);
        fastestRefresh = std::min(fastestRefresh, seconds);
        const auto select = [&] { selected = plain.select(controller.dueDates().tomorrow); };
        fastestSelect = std::min(fastestSelect, secondsOf(select));
    }
    if (selected != controller.todayTasks().size()) state.SkipWithError("the two ways differ");
    state.counters["fastest_us"] = fastestRefresh * 1e6;
    state.counters["sqlite_us"] = fastestSelect * 1e6;
    state.counters["ratio"] = fastestRefresh / fastestSelect;
    state.counters["due"] = static_cast<double>(selected);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    constexpr std::int64_t kIsolatedPerMille = 6;
    benchmark->ArgNames({"tasks", "isolated_per_mille"})->UseManualTime()->Unit(benchmark::kMicrosecond);
    for (const std::int64_t tasks : {1'000, 10'000, 100'000}) benchmark->Args({tasks, 0});
    benchmark->Args({100'000, kIsolatedPerMille});
    if (!std::getenv("CORVANE_BENCHMARK_MILLION")) return;
    for (const std::int64_t perMille : {std::int64_t{0}, kIsolatedPerMille}) {
        benchmark->Args({1'000'000, perMille});
    }
}

BENCHMARK_CAPTURE(warmRefresh, unchanged, Commits::kNone)->Apply(sizes);
BENCHMARK_CAPTURE(warmRefresh, after_a_commit, Commits::kBeforeEachRefresh)->Apply(sizes);

}  // namespace
}  // namespace corvane
