#include "apps/corvane/TaskQuery.h"

#include <charconv>
#include <limits>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreNames.h"
#include "apps/host/DateWords.h"
#include "apps/host/TaskSelection.h"
#include "platform/foundation/Text.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

Predicate userPredicate(const std::string& text) {
    const auto parsed = predicateWithFormat(textFromUtf8(text));
    if (const auto* error = std::get_if<PredicateError>(&parsed)) {
        throw CommandFailure(translated("--where, at character %1$@: %2$@",
                                        std::to_string(error->position + 1), error->message),
                             kUsage);
    }
    const Predicate& predicate = std::get<Predicate>(parsed);
    if (const auto fault = faultOfVariables(predicate)) {
        throw CommandFailure(translated("--where: %@", *fault), kUsage);
    }
    return predicate;
}

TaskSelection selectionOf(Program& program, const TaskQueryOptions& options) {
    GSData& data = program.store();
    TaskSelection selection;
    if (!options.filter.empty()) selection.filter = filterFromText(options.filter);
    if (selection.filter == kListFilter && options.list.empty()) {
        throw CommandFailure(
            translated("filter %@ shows the tasks of one list; name it with --list", options.filter), kUsage);
    }
    if (!options.account.empty()) selection.account = &accountNamed(data, options.account);
    if (!options.list.empty()) selection.list = &listNamed(data, options.list, selection.account);
    if (!options.where.empty()) selection.where = userPredicate(options.where);
    selection.order = options.order;
    selection.hideCompleted = options.hideCompleted;
    selection.rootsOnly = options.rootsOnly;
    return selection;
}

// A predicate that parses may still ask for what the model does not have.
CommandFailure failureOf(const StoreError& error) {
    return CommandFailure(error.message, error.kind == StoreError::Kind::kInvalid ? kUsage : kFailed);
}

}  // namespace

void addTaskQueryOptions(CLI::App& command, TaskQueryOptions& options) {
    constexpr int kLastOrder = 2;
    constexpr std::int64_t kFewest = 0;
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    command.add_option("--filter", options.filter,
                       translated("A filter's name or number; corvane filters lists them"));
    command.add_option("--account", options.account, translated("An account's tasks"));
    command.add_option("--list", options.list, translated("A list's tasks"));
    command.add_option("--where", options.where, translated("Tasks that fulfil a predicate"))
        ->type_name("PREDICATE");
    command
        .add_option("--order", options.order,
                    translated("0 manual, 1 priority and title, 2 priority and due date"))
        ->check(CLI::Range(0, kLastOrder));
    command.add_option("--limit", options.limit, translated("At most so many"))
        ->type_name("N")
        ->check(CLI::Range(kFewest, kMost).description(""));
    command.add_flag("--hide-completed", options.hideCompleted, translated("Only open tasks"));
    command.add_flag("--roots", options.rootsOnly, translated("No subtasks"));
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
    throw CommandFailure(translated("there is no filter \"%@\"; corvane filters lists them", text), kUsage);
}

FetchRequest taskRequest(Program& program, const TaskQueryOptions& options) {
    FetchRequest request = requestForTasks(selectionOf(program, options), program.store().viewContext());
    request.fetchLimit = options.limit.value_or(0);
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
