// The standard task filters beside the SQL that somebody would write by hand for each of them, and the export
// of many tasks.
//
// The store holds 100,000 tasks in 100 lists; each filter by dates selects 1,000 of them, and of the filters
// that select them all the first 1,000 are fetched. Both find the index that serves the filter best.
#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/Comparison.h"
#include "dates/DateBasics.h"
#include "model/GList.h"
#include "model/GSData.h"
#include "model/GTask.h"
#include "model/GUser.h"
#include "platform/foundation/Environment.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

// 2024-03-05 12:00 UTC.
constexpr Date kNow{TimeInterval(731332800)};
constexpr TimeInterval kDay{86'400};
constexpr int kTasks = 100'000;
constexpr int kLists = 100;
constexpr std::size_t kFetched = 1000;

Environment environmentOf(const std::filesystem::path& directory) {
    Environment environment;
    environment.now = [] { return kNow; };
    environment.timeZone = "UTC";
    environment.locale = "en_US";
    environment.containerDirectory = directory;
    environment.userDefaults = std::make_shared<UserDefaults>(directory / "settings.plist");
    if (!environment.userDefaults->setObject("ShowOverdueTasksList", {true})) {
        throw std::runtime_error("no settings");
    }
    return environment;
}

// One task in a hundred is late, due today, tomorrow, within the week, undated or done; the others are due
// later.
void place(GTask& task, int i) {
    constexpr std::array<double, 4> kDays = {-3, 0, 1, 4};
    const auto kind = static_cast<std::size_t>(i / kLists % 100);
    const double days = kind < kDays.size() ? kDays[kind] : 10 + i % 300;
    task.setCompleted(kind == 5);
    if (kind == 4) return;
    task.setHasDueDate(true);
    task.setHasDueTime(i % 2 == 0);
    task.setDueDate(kNow + kDay * days + TimeInterval(i % 3600));
}

void fill(GSData& data) {
    ManagedObjectContext& context = data.viewContext();
    GUser& user = context.insert<GUser>();
    std::vector<GList*> lists;
    for (int i = 0; i < kLists; ++i) {
        lists.push_back(&context.insert<GList>());
        lists.back()->setUser(&user);
        lists.back()->setName(u"List " + std::u16string(1, static_cast<char16_t>(u'A' + i)));
        lists.back()->setDisplayOrder(static_cast<std::int16_t>(i));
    }
    for (int i = 0; i < kTasks; ++i) {
        GTask& task = context.insert<GTask>();
        task.setName(u"Buy milk and bread for tomorrow");
        if (i % 3 == 0) task.setNotes(u"Ask first whether there is one left, then bring it along");
        task.setList(lists[static_cast<std::size_t>(i % kLists)]);
        task.setDisplayOrder(static_cast<std::int16_t>(i / kLists));
        task.setPriority(i % 6 * 10);
        place(task, i);
    }
    if (const auto error = context.save()) throw std::runtime_error(error->message);
}

std::filesystem::path filledContainer() {
    static const Directory directory;
    static const bool isFilled = [] {
        const std::filesystem::path container = directory.file().parent_path();
        const EnvironmentScope scope(environmentOf(container));
        GSData data;
        data.launch();
        fill(data);
        return true;
    }();
    benchmark::DoNotOptimize(isFilled);
    return directory.file().parent_path();
}

// ?1 now, ?2 today, ?3 tomorrow, ?4 the day after, ?5 next week; the account and the list are the first ones.
std::string writtenByHand(std::uint32_t filter) {
    static const std::string kOpenAndDated = " AND t.ZCOMPLETED = 0 AND t.ZHASDUEDATE = 1";
    static const std::array<std::string, kTaskFilterCount> kConditions = {
        kOpenAndDated +
            " AND ((t.ZHASDUETIME = 1 AND t.ZDUEDATE < ?1) OR (t.ZHASDUETIME = 0 AND t.ZDUEDATE < "
            "?2)) AND l.ZUSER = 1",
        kOpenAndDated + " AND t.ZDUEDATE >= ?2 AND t.ZDUEDATE < ?3",
        kOpenAndDated + " AND t.ZDUEDATE >= ?3 AND t.ZDUEDATE < ?4",
        kOpenAndDated + " AND t.ZDUEDATE >= ?2 AND t.ZDUEDATE < ?5",
        " AND t.ZCOMPLETED = 0 AND t.ZHASDUEDATE = 0",
        " AND t.ZCOMPLETED = 0",
        " AND t.ZCOMPLETED = 1",
        " AND t.ZCOMPLETED = 0",
        " AND t.ZCOMPLETED = 0 AND t.ZLIST = 1"};
    const bool isOfAccount = filter != kOverdueFilter && filter != kListFilter;
    std::string order = "l.ZDISPLAYORDER, t.ZPRIORITY DESC, t.ZHASDUEDATE DESC, t.ZDUEDATE, t.ZDISPLAYORDER";
    if (filter == kEverythingFilter) order = "l.ZDISPLAYORDER, t.ZDISPLAYORDER";
    if (filter == kListFilter) order = "t.ZDISPLAYORDER";
    return "SELECT t.* FROM ZGTASK t JOIN ZGLIST l ON l.Z_PK = t.ZLIST JOIN ZGUSER u ON u.Z_PK = l.ZUSER "
           "WHERE t.ZREMOVED = 0 AND t.ZNAME IS NOT NULL AND t.ZNAME <> '' AND l.ZREMOVED = 0 "
           "AND l.ZISISOLATED = 0" +
           kConditions[filter] + (isOfAccount ? " AND (u.ZACCOUNTTYPE = 5000 OR l.ZUSER = 1)" : "") +
           " ORDER BY " + order + " LIMIT 1000";
}

sqlite3_stmt* prepareByHand(Plain& plain, std::uint32_t filter) {
    sqlite3_stmt* statement = plain.prepare(writtenByHand(filter));
    int parameter = 1;
    if (sqlite3_bind_parameter_count(statement) > 0) {
        sqlite3_bind_double(statement, parameter, kNow.time_since_epoch().count());
    }
    for (const std::int64_t days : {0, 1, 2, 8}) {
        const double midnight = dateOfTodayMidnightWithDaysOffset(days).time_since_epoch().count();
        sqlite3_bind_double(statement, ++parameter, midnight);
    }
    return statement;
}

struct FilterFetch {
    GSData data;
    std::uint32_t filter;
    GUser* account = nullptr;
    GList* list = nullptr;

    explicit FilterFetch(std::uint32_t number) : filter(number) {
        data.launch();
        FetchRequest lists;
        lists.sortDescriptors = {{"displayOrder"}};
        list = data.viewContext().fetch<GList>(lists).front();
        account = list->user();
    }

    // Parsed, bound and fetched, as a view of the filter asks for it.
    std::vector<GTask*> run() {
        constexpr bool kHideCompleted = true;
        constexpr bool kRootsOnly = true;
        const auto number = static_cast<std::int32_t>(filter);
        FetchRequest request;
        request.predicate = GSData::predicateFromString(
            GSData::predicateStringForTasksWithFilter(number, kHideCompleted, !kRootsOnly), account, list);
        constexpr std::int32_t kManualOrder = 0;
        request.sortDescriptors = *GSData::sortDescriptorsForTasksOrder(kManualOrder, number);
        request.fetchLimit = kFetched;
        return data.viewContext().fetch<GTask>(std::move(request));
    }
};

// An index by dates would lead SQLite astray where there is no date to ask for.
void makeBestIndex(Plain& plain, std::uint32_t filter) {
    const bool hasDates = filter < kEverythingFilter || filter == kCompletedFilter;
    plain.run("DROP INDEX IF EXISTS best");
    if (hasDates) plain.run("CREATE INDEX best ON ZGTASK (ZCOMPLETED, ZREMOVED, ZHASDUEDATE, ZDUEDATE)");
}

// Before each turn somebody else commits, so that every row is read afresh.
void runFilter(benchmark::State& state, int unsavedChanges) {
    const EnvironmentScope scope(environmentOf(filledContainer()));
    const auto filter = static_cast<std::uint32_t>(state.range(0));
    Plain plain(filledContainer() / kStoreFileName);
    makeBestIndex(plain, filter);
    FilterFetch ours(filter);
    sqlite3_stmt* const statement = prepareByHand(plain, filter);
    const std::vector<GTask*> tasks = ours.run();
    for (int i = 0; i < unsavedChanges; ++i) tasks[static_cast<std::size_t>(i)]->setNotes(u"changed");
    Times ourTimes;
    Times plainTimes;
    std::size_t rows = 0;
    for ([[maybe_unused]] auto step : state) {
        plain.run("UPDATE ZGUSER SET Z_OPT = Z_OPT + 1");
        state.SetIterationTime(ourTimes.measure([&] { benchmark::DoNotOptimize(ours.run()); }));
        plainTimes.measure([&] { rows = readAll(statement); });
    }
    if (rows != tasks.size()) state.SkipWithError("the two ways differ");
    report(state, ourTimes, plainTimes);
    state.counters["rows"] = static_cast<double>(rows);
}
BENCHMARK_CAPTURE(runFilter, saved, 0)->DenseRange(0, 8)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(runFilter, with_100_unsaved_changes, 100)
    ->DenseRange(0, 8)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

void exportTasks(benchmark::State& state, bool html) {
    const EnvironmentScope scope(environmentOf(filledContainer()));
    GSData data;
    data.launch();
    FetchRequest request;
    request.fetchLimit = static_cast<std::size_t>(state.range(0));
    const std::vector<GTask*> tasks = data.viewContext().fetch<GTask>(std::move(request));
    constexpr bool kShowSubtasking = true;
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(GSData::stringOfTasks(tasks, u"Title", kShowSubtasking, html));
    }
    state.SetComplexityN(state.range(0));
}
void exportSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1250)->Arg(2500)->Arg(5000)->Arg(10'000)->Complexity(benchmark::oN);
    benchmark->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(exportTasks, html, true)->Apply(exportSizes);
BENCHMARK_CAPTURE(exportTasks, text, false)->Apply(exportSizes);

}  // namespace
}  // namespace corvane
