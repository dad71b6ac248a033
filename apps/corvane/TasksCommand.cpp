// `corvane tasks` and `corvane filters`: tasks by filter, list and predicate.
#include <memory>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/TaskListing.h"
#include "apps/corvane/TaskQuery.h"
#include "model/CorvaneUserDefaults.h"
#include "platform/foundation/Text.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

struct TasksOptions {
    TaskQueryOptions query;
    bool count = false;
};

void runTasks(Program& program, const TasksOptions& options) {
    if (options.count) {
        const std::size_t count = countTasks(program, options.query);
        return program.options.json ? program.printData(jsonText(Json(count)))
                                    : program.printLine(std::to_string(count));
    }
    TaskListing listing(program, program.store());
    for (const GTask* task : fetchTasks(program, options.query)) listing.add({task, 0});
    listing.print(translated("No tasks."));
}

std::string nameOfFilter(std::uint32_t filter) {
    return utf8FromText(GSData::filterLocalizedName(filter).value_or(u""));
}

void printFilters(Program& program, const TaskQueryOptions& query) {
    Json all = Json::array();
    for (std::uint32_t filter = 0; filter < kListFilter; ++filter) {
        TaskQueryOptions asked = query;
        asked.filter = std::to_string(filter);
        const std::size_t count = countTasks(program, asked);
        all.push_back({
            {"number", filter                             },
            {"name",   nameOfFilter(filter)               },
            {"tasks",  count                              },
            {"order",  GSData::tasksOrderForFilter(filter)}
        });
        if (program.options.json) continue;
        const std::string counted = std::to_string(count);
        program.printLine(asked.filter + std::string(counted.size() < 7 ? 7 - counted.size() : 1, ' ') +
                          counted + "  " + nameOfFilter(filter));
    }
    if (program.options.json) program.printData(jsonText(all));
}

void setFilterOrder(const std::string& name, int order) {
    const std::string_view key = tasksOrderKeyForFilter(filterFromText(name));
    if (key.empty()) throw CommandFailure(translated("this filter remembers no order"), kUsage);
    if (!corvaneUserDefaults().setObject(key, {std::int64_t{order}})) {
        throw CommandFailure(translated("the settings could not be written"));
    }
}

void addSetFilterCommand(CLI::App& filters) {
    struct Options {
        std::string filter;
        int order = 0;
    };
    const auto options = std::make_shared<Options>();
    constexpr int kLastOrder = 2;
    CLI::App& command = *filters.add_subcommand("set", translated("Remember the order of a filter's tasks"));
    command.add_option("filter", options->filter, translated("A filter's name or number"))->required();
    command
        .add_option("--order", options->order,
                    translated("0 manual, 1 priority and title, 2 priority and due date"))
        ->check(CLI::Range(0, kLastOrder))
        ->required();
    command.callback([options] { setFilterOrder(options->filter, options->order); });
}

}  // namespace

void addTasksCommands(CLI::App& app, Program& program) {
    const auto options = std::make_shared<TasksOptions>();
    CLI::App& tasks = *app.add_subcommand("tasks", translated("List tasks by filter, list or predicate"));
    addTaskQueryOptions(tasks, options->query);
    tasks.add_flag("--count", options->count, translated("Only say how many"));
    tasks.callback([&program, options] { runTasks(program, *options); });

    const auto query = std::make_shared<TaskQueryOptions>();
    CLI::App& filters =
        *app.add_subcommand("filters", translated("List the filters and how many tasks each has"));
    filters.add_option("--account", query->account, translated("The account at hand, else the default one"));
    filters.add_flag("--hide-completed", query->hideCompleted, translated("Count only open tasks"));
    addSetFilterCommand(filters);
    filters.callback([&program, &filters, query] {
        if (filters.get_subcommands().empty()) printFilters(program, *query);
    });
}

}  // namespace corvane
