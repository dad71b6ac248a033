// `corvane task list`, `task tree` and `task show`.
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/corvane/TaskListing.h"
#include "apps/corvane/TerminalStyle.h"
#include "apps/host/Places.h"
#include "apps/host/TaskDescription.h"
#include "model/TaskTree.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

struct ListingOptions {
    std::optional<std::string> list;
    std::optional<std::string> account;
    std::optional<std::string> task;
    bool all = false;
    bool completed = false;
};

bool isListed(const GTask& task, const ListingOptions& options) {
    return options.all || task.completed() == options.completed;
}

/// The tasks of a tree that are to be listed; children of one that is not move up a level.
void addTree(std::vector<ListedTask>& listed, GTask& root, const ListingOptions& options) {
    std::vector<std::size_t> depths;
    for (const TaskInTree& entry : liveTree(root)) {
        const bool isRoot = depths.empty();
        const GTask* parent = isRoot ? nullptr : entry.task->parentTask();
        const std::size_t parentDepth = isRoot ? 0 : depths[entry.parent];
        depths.push_back(parent && isListed(*parent, options) ? parentDepth + 1 : parentDepth);
        if (isListed(*entry.task, options)) listed.push_back({entry.task, depths.back()});
    }
}

std::vector<ListedTask> listedTasks(const GList& list, const ListingOptions& options) {
    std::vector<ListedTask> listed;
    for (GTask* root : list.orderedRootTasks()) addTree(listed, *root, options);
    return listed;
}

std::string headingOf(const GList& list) {
    std::string heading = list.name() && !list.name()->empty() ? shownText(*list.name()) : "(untitled)";
    if (const GUser* account = list.user()) {
        if (account->name() && !account->name()->empty()) heading += " - " + shownText(*account->name());
    }
    return list.isIsolated() ? heading + " (isolated)" : heading;
}

std::vector<GList*> chosenLists(GSData& data, const ListingOptions& options) {
    const GUser* account = options.account ? &accountNamed(data, *options.account) : nullptr;
    if (options.list) return {&listNamed(data, *options.list, account)};
    return account ? account->orderedLists() : listsInOrder(data.viewContext());
}

void listTasks(Program& program, const ListingOptions& options) {
    GSData& data = program.store();
    TaskListing listing(program, data);
    for (const GList* list : chosenLists(data, options)) {
        const std::vector<ListedTask> tasks = listedTasks(*list, options);
        if (tasks.empty()) continue;
        listing.addHeading(headingOf(*list));
        for (const ListedTask& task : tasks) listing.add(task);
    }
    listing.print(options.completed ? "No completed tasks." : "No tasks.");
}

void showTree(Program& program, ListingOptions options) {
    options.all = true;
    GSData& data = program.store();
    if (!options.task) return listTasks(program, options);
    TaskListing listing(program, data);
    std::vector<ListedTask> tasks;
    addTree(tasks, taskNamed(data, *options.task), options);
    for (const ListedTask& task : tasks) listing.add(task);
    listing.print("No tasks.");
}

std::string withIndentedLines(std::u16string_view text) {
    std::string result;
    for (;;) {
        const std::size_t end = text.find(u'\n');
        result += shownText(text.substr(0, end));
        if (end == text.npos) return result;
        result += "\n            ";
        text.remove_prefix(end + 1);
    }
}

void showTask(Program& program, const std::string& name) {
    const GTask& task = taskNamed(program.store(), name);
    if (program.options.json) return program.printData(jsonText(taskJson(task)));
    const TerminalStyle style = TerminalStyle::ofOutput();
    program.printLine(style.bold(task.name() ? shownText(*task.name()) : "(untitled)"));
    for (const TaskField& field : fieldsOfTask(task)) {
        std::string label = utf8FromText(field.label);
        label.resize(std::max<std::size_t>(label.size(), 12), ' ');
        program.printLine(label + withIndentedLines(field.text));
    }
    program.printLine("Identifier  " + shortIdentifier(task));
}

}  // namespace

void addTaskListingCommands(CLI::App& noun, Program& program) {
    const auto options = std::make_shared<ListingOptions>();
    CLI::App& list = *noun.add_subcommand("list", "List open tasks and number them");
    list.add_option("--list", options->list, "Only this list")->option_text("LIST");
    list.add_option("--account", options->account, "Only this account")->option_text("ACCOUNT");
    CLI::Option* all = list.add_flag("--all", options->all, "Completed tasks too");
    list.add_flag("--completed", options->completed, "Completed tasks only")->excludes(all);
    list.callback([&program, options] { listTasks(program, *options); });

    CLI::App& tree = *noun.add_subcommand("tree", "Show a task with all tasks below it, or whole lists");
    tree.add_option("TASK", options->task, "A task");
    tree.add_option("--list", options->list, "Only this list")->option_text("LIST");
    tree.callback([&program, options] { showTree(program, *options); });

    const auto name = std::make_shared<std::string>();
    CLI::App& show = *noun.add_subcommand("show", "Show all about a task");
    show.add_option("TASK", *name, "A task")->required();
    show.callback([&program, name] { showTask(program, *name); });
}

}  // namespace corvane
