// `corvane task list`, `task tree` and `task show`.
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/corvane/TaskListing.h"
#include "apps/corvane/TerminalStyle.h"
#include "apps/corvane/TerminalText.h"
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
    std::string heading = shownName(list.name());
    if (const GUser* account = list.user()) {
        if (account->name() && !account->name()->empty()) heading += " - " + shownText(*account->name());
    }
    return list.isIsolated() ? translated("%@ (isolated)", heading) : heading;
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
    listing.print(options.completed ? translated("No completed tasks.") : translated("No tasks."));
}

void showTree(Program& program, ListingOptions options) {
    options.all = true;
    GSData& data = program.store();
    if (!options.task) return listTasks(program, options);
    TaskListing listing(program, data);
    std::vector<ListedTask> tasks;
    addTree(tasks, taskNamed(data, *options.task), options);
    for (const ListedTask& task : tasks) listing.add(task);
    listing.print(translated("No tasks."));
}

std::string withIndentedLines(std::u16string_view text, std::size_t indent) {
    std::string result;
    for (;;) {
        const std::size_t end = text.find(u'\n');
        result += shownText(text.substr(0, end));
        if (end == text.npos) return result;
        result += "\n" + std::string(indent, ' ');
        text.remove_prefix(end + 1);
    }
}

void printFields(Program& program, const std::vector<TaskField>& fields) {
    constexpr std::size_t kGap = 2;
    std::size_t width = 10;
    for (const TaskField& field : fields) width = std::max(width, displayWidth(field.label));
    for (const TaskField& field : fields) {
        const std::string gap(width + kGap - displayWidth(field.label), ' ');
        program.printLine(utf8FromText(field.label) + gap + withIndentedLines(field.text, width + kGap));
    }
}

void showTask(Program& program, const std::string& name) {
    const GTask& task = taskNamed(program.store(), name);
    if (program.options.json) return program.printData(jsonText(taskJson(task)));
    const TerminalStyle style = TerminalStyle::ofOutput();
    program.printLine(style.bold(shownName(task.name())));
    std::vector<TaskField> fields = fieldsOfTask(task);
    fields.push_back({localizedString("Identifier"), textFromUtf8(shortIdentifier(task))});
    printFields(program, fields);
}

}  // namespace

void addTaskListingCommands(CLI::App& noun, Program& program) {
    const auto options = std::make_shared<ListingOptions>();
    CLI::App& list = *noun.add_subcommand("list", translated("List open tasks and number them"));
    list.add_option("--list", options->list, translated("Only this list"))->option_text("LIST");
    list.add_option("--account", options->account, translated("Only this account"))->option_text("ACCOUNT");
    CLI::Option* all = list.add_flag("--all", options->all, translated("Completed tasks too"));
    list.add_flag("--completed", options->completed, translated("Completed tasks only"))->excludes(all);
    list.callback([&program, options] { listTasks(program, *options); });

    CLI::App& tree =
        *noun.add_subcommand("tree", translated("Show a task with all tasks below it, or whole lists"));
    tree.add_option("TASK", options->task, translated("A task"));
    tree.add_option("--list", options->list, translated("Only this list"))->option_text("LIST");
    tree.callback([&program, options] { showTree(program, *options); });

    const auto name = std::make_shared<std::string>();
    CLI::App& show = *noun.add_subcommand("show", translated("Show all about a task"));
    show.add_option("TASK", *name, translated("A task"))->required();
    show.callback([&program, name] { showTask(program, *name); });
}

}  // namespace corvane
