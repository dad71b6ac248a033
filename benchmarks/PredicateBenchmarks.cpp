// Predicates: reading and binding a filter, translating it, asking an object in memory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "AllocationCount.h"
#include "model/CorvaneModel.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "platform/store/ManagedObjectContext.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/PredicateOperators.h"
#include "platform/store/SqlQuery.h"

namespace corvane {
namespace {

constexpr const char16_t* kWidgetText =
    u"removed == NO && name != nil && name != '' && list.removed == NO && list.isIsolated == NO && "
    u"completed == NO && hasDueDate == YES && dueDate < $TOMORROW";
constexpr const char16_t* kFilterText =
    u"removed == NO && name != nil && name != '' && list.removed == NO && list.isIsolated == NO && "
    u"(list.user.accountType == 5000 || list.user == $USER) && completed == NO && hasDueDate == YES && "
    u"dueDate >= $TODAY && dueDate < $TOMORROW";
constexpr Date kToday{TimeInterval(731289600)};
constexpr Date kTomorrow{TimeInterval(731376000)};

const Predicate::Variables& variables() {
    static const Predicate::Variables kVariables = {
        {"USER",     Value()         },
        {"TODAY",    Value(kToday)   },
        {"TOMORROW", Value(kTomorrow)}
    };
    return kVariables;
}

Predicate bound(const char16_t* text) { return fixedPredicate(text).withSubstitutionVariables(variables()); }

// A list with one task that fits the widget's predicate, and one like it that is named differently.
class Store {
  public:
    Store() : coordinator_(corvaneModel()), context_(opened()) {
        list_.setName(u"Errands");
        for (GTask* task : {&task_, &other_}) {
            task->setName(u"Buy milk and bread on the way home");
            task->setHasDueDate(true);
            task->setDueDate(kToday);
            task->setList(&list_);
        }
        other_.setName(u"Call the plumber about the kitchen");
    }
    ~Store() { std::filesystem::remove_all(directory_); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    GTask& task() { return task_; }
    GTask& other() { return other_; }

  private:
    PersistentStoreCoordinator& opened() {
        PersistentStoreDescription description;
        description.file = directory_ / "Plorix.sqlite";
        std::filesystem::create_directories(directory_);
        if (const auto error = coordinator_.addStore(description)) throw std::runtime_error(error->message);
        return coordinator_;
    }

    std::filesystem::path directory_ =
        std::filesystem::temp_directory_path() / ("corvane-predicates-" + std::to_string(getpid()));
    PersistentStoreCoordinator coordinator_;
    ManagedObjectContext context_;
    GList& list_ = context_.insert<GList>();
    GTask& task_ = context_.insert<GTask>();
    GTask& other_ = context_.insert<GTask>();
};

void countAllocations(benchmark::State& state, std::size_t before) {
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocationCount() - before),
                                                       benchmark::Counter::kAvgIterations);
}

void evaluate(benchmark::State& state, const Predicate& predicate, const GTask& task, bool expected) {
    if (predicate.evaluate(task) != expected) return state.SkipWithError("unexpected answer");
    const std::size_t before = allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(predicate.evaluate(task));
    countAllocations(state, before);
}

void parsesAndBindsAFilter(benchmark::State& state) {
    for (auto _ : state) {
        auto parsed = predicateWithFormat(kFilterText);
        benchmark::DoNotOptimize(std::get<Predicate>(parsed).withSubstitutionVariables(variables()));
    }
}
BENCHMARK(parsesAndBindsAFilter);

void bindsAKeptFilter(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(bound(kFilterText));
}
BENCHMARK(bindsAKeptFilter);

void translatesTheWidgetsRequest(benchmark::State& state) {
    FetchRequest request{.entityName = "GTask", .predicate = bound(kWidgetText)};
    request.sortDescriptors = {
        {"priority", false},
        {"dueDate"         },
        {"list.name"},
        {"name"         }
    };
    const HasColumn hasColumn = [](const EntityDescription&, PropertyIndex) { return true; };
    std::string error;
    for (auto _ : state) {
        benchmark::DoNotOptimize(sqlQueryForRequest(request, corvaneModel(), hasColumn, error));
    }
}
BENCHMARK(translatesTheWidgetsRequest);

void evaluatesTheWidgetsPredicate(benchmark::State& state) {
    Store store;
    evaluate(state, bound(kWidgetText), store.task(), true);
}
BENCHMARK(evaluatesTheWidgetsPredicate);

void evaluatesAFilterOverThreeTables(benchmark::State& state) {
    Store store;
    evaluate(state, bound(kFilterText), store.task(), true);
}
BENCHMARK(evaluatesAFilterOverThreeTables);

void evaluatesContainsWithoutCaseAndMarks(benchmark::State& state) {
    Store store;
    evaluate(state, fixedPredicate(u"name CONTAINS[cd] 'BREAD'"), store.task(), true);
}
BENCHMARK(evaluatesContainsWithoutCaseAndMarks);

void ordersTwoTasksByName(benchmark::State& state) {
    Store store;
    const SortDescriptor byPriority{"priority", false};
    const SortDescriptor byDueDate{"dueDate"};
    const SortDescriptor byListName{"list.name"};
    const SortDescriptor byName{"name", true, SortDescriptor::Comparison::kLocalizedCaseInsensitive};
    const std::vector<SortDescriptor> keys = {byPriority, byDueDate, byListName, byName};
    const ObjectOrder order(keys);
    const std::size_t before = allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(order(&store.task(), &store.other()));
    countAllocations(state, before);
}
BENCHMARK(ordersTwoTasksByName);

}  // namespace
}  // namespace corvane
