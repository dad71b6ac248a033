#include "apps/corvane/TaskQuery.h"

#include <charconv>

#include <CLI/CLI.hpp>

#include "apps/corvane/StoreNames.h"
#include "apps/host/DateWords.h"
#include "model/Accounts.h"
#include "platform/foundation/Text.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

constexpr std::u16string_view kEveryLiveTask = u"removed == NO && list.removed == NO";

struct Scope {
    GUser* account = nullptr;
    GList* list = nullptr;
};

Scope scopeOf(Program& program, const TaskQueryOptions& options) {
    GSData& data = program.store();
    Scope scope;
    if (!options.account.empty()) scope.account = &accountNamed(data, options.account);
    if (!options.list.empty()) scope.list = &listNamed(data, options.list, scope.account);
    return scope;
}

Predicate userPredicate(const std::string& text) {
    const auto parsed = predicateWithFormat(textFromUtf8(text));
    if (const auto* error = std::get_if<PredicateError>(&parsed)) {
        throw CommandFailure(
            "--where, at character " + std::to_string(error->position + 1) + ": " + error->message, kUsage);
    }
    return std::get<Predicate>(parsed);
}

std::u16string everyLiveTask(const TaskQueryOptions& options) {
    std::u16string text(kEveryLiveTask);
    if (options.rootsOnly) text += u" && parentTask = nil";
    if (options.hideCompleted) text += u" && completed == NO";
    return text;
}

// The parts of a request are predicates of their own, joined at the end.
std::vector<Predicate> conditions(Program& program, const TaskQueryOptions& options, const Scope& scope) {
    std::vector<Predicate> parts;
    if (options.filter.empty()) {
        parts.push_back(fixedPredicate(everyLiveTask(options)));
        if (scope.account) parts.push_back(fixedPredicate(u"list.user == %@", {Value(scope.account)}));
    } else {
        GUser* account = scope.account ? scope.account : defaultAccount(program.store().viewContext());
        const auto number = static_cast<std::int32_t>(filterFromText(options.filter));
        parts.push_back(GSData::predicateFromString(
            GSData::predicateStringForTasksWithFilter(number, options.hideCompleted, options.rootsOnly),
            account, scope.list));
    }
    if (scope.list) parts.push_back(fixedPredicate(u"list == %@", {Value(scope.list)}));
    if (!options.where.empty()) {
        parts.push_back(predicateWithTaskVariables(userPredicate(options.where), scope.account, scope.list));
    }
    return parts;
}

std::vector<SortDescriptor> order(const TaskQueryOptions& options, const Scope& scope) {
    const std::uint32_t filter = !options.filter.empty() ? filterFromText(options.filter)
                                 : scope.list            ? kListFilter
                                                         : kEverythingFilter;
    const bool listDecides = scope.list && options.filter.empty();
    const int remembered = listDecides ? scope.list->tasksOrder() : GSData::tasksOrderForFilter(filter);
    return GSData::sortDescriptorsForTasksOrder(options.order.value_or(remembered),
                                                static_cast<std::int32_t>(filter))
        .value_or(std::vector<SortDescriptor>());
}

// A predicate that parses may still ask for what the model does not have.
CommandFailure failureOf(const StoreError& error) {
    return CommandFailure(error.message, error.kind == StoreError::Kind::kInvalid ? kUsage : kFailed);
}

}  // namespace

void addTaskQueryOptions(CLI::App& command, TaskQueryOptions& options) {
    constexpr int kLastOrder = 2;
    command.add_option("--filter", options.filter, "A filter's name or number; corvane filters lists them");
    command.add_option("--account", options.account, "An account's tasks");
    command.add_option("--list", options.list, "A list's tasks");
    command.add_option("--where", options.where, "Tasks that fulfil a predicate")->type_name("PREDICATE");
    command.add_option("--order", options.order, "0 manual, 1 priority and title, 2 priority and due date")
        ->check(CLI::Range(0, kLastOrder));
    command.add_option("--limit", options.limit, "At most so many")->type_name("N");
    command.add_flag("--hide-completed", options.hideCompleted, "Only open tasks");
    command.add_flag("--roots", options.rootsOnly, "No subtasks");
}

std::uint32_t filterFromText(const std::string& text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size() && number < kTaskFilterCount) return number;
    const std::u16string words = foldedWords(textFromUtf8(text));
    for (std::uint32_t filter = 0; filter < kListFilter; ++filter) {
        const std::u16string name = foldedWords(textFromUtf8(filterNameKey(filter)));
        const std::u16string localName = foldedWords(GSData::filterLocalizedName(filter).value_or(u""));
        if (words == name || words == localName) return filter;
    }
    throw CommandFailure("there is no filter \"" + text + "\"; corvane filters lists them", kUsage);
}

FetchRequest taskRequest(Program& program, const TaskQueryOptions& options) {
    const Scope scope = scopeOf(program, options);
    FetchRequest request;
    request.entityName = GTask::kEntityName;
    request.predicate = andPredicateWithSubpredicates(conditions(program, options, scope));
    request.sortDescriptors = order(options, scope);
    request.fetchLimit = options.limit.value_or(0);
    request.relationshipKeyPathsForPrefetching = {"list.user"};
    return request;
}

std::vector<GTask*> fetchTasks(Program& program, const TaskQueryOptions& options) {
    if (options.limit == std::size_t{0}) return {};
    const auto result = program.store().viewContext().executeFetch(taskRequest(program, options));
    if (const auto* error = std::get_if<StoreError>(&result)) throw failureOf(*error);
    std::vector<GTask*> tasks;
    for (ManagedObject* object : std::get<std::vector<ManagedObject*>>(result)) {
        tasks.push_back(static_cast<GTask*>(object));
    }
    return tasks;
}

std::size_t countTasks(Program& program, const TaskQueryOptions& options) {
    if (options.limit == std::size_t{0}) return 0;
    const auto result = program.store().viewContext().countForFetch(taskRequest(program, options));
    if (const auto* error = std::get_if<StoreError>(&result)) throw failureOf(*error);
    return std::get<std::size_t>(result);
}

}  // namespace corvane
