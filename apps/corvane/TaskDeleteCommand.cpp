// `corvane task delete`.
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "model/TaskTree.h"

namespace corvane {
namespace {

struct Options {
    std::vector<std::string> tasks;
    bool keepSubtasks = false;
    bool dryRun = false;
};

/// Tasks that another one of them takes along are left out.
std::vector<GTask*> topmost(std::vector<GTask*> tasks) {
    const std::set<const GTask*> all(tasks.begin(), tasks.end());
    std::erase_if(tasks, [&](const GTask* task) {
        return std::ranges::any_of(
            all, [&](const GTask* other) { return other != task && task->hasParent(other); });
    });
    return tasks;
}

std::string sentence(const GTask& task, const Options& options) {
    const std::string name = quotedName(task.name());
    const std::size_t below = task.countTotalSubTasks();
    if (below == 0)
        return options.dryRun ? translated("Would delete %@", name) : translated("Deleted %@", name);
    if (options.keepSubtasks) {
        return translated(options.dryRun ? textKey("Would delete %1$@; %2$@ below it move up")
                                         : textKey("Deleted %1$@; %2$@ below it move up"),
                          name, countedTasks(below));
    }
    return translated(options.dryRun ? textKey("Would delete %1$@ and %2$@ below it")
                                     : textKey("Deleted %1$@ and %2$@ below it"),
                      name, countedTasks(below));
}

// A tombstone is a change that the server has to hear of.
void deleteTask(GTask& task, bool keepSubtasks) {
    if (keepSubtasks) {
        task.updateLastModified();
        return task.deleteTask(kKeepTombstone);
    }
    for (const TaskInTree& entry : liveTree(task)) entry.task->updateLastModified();
    task.deleteTaskAndSubTasks(kKeepTombstone);
}

void deleteTasks(Program& program, const Options& options) {
    std::vector<GTask*> tasks = tasksNamed(program.store(), options.tasks);
    if (!options.keepSubtasks) tasks = topmost(std::move(tasks));
    std::string lines;
    Json deleted = Json::array();
    for (GTask* task : tasks) {
        lines += sentence(changeable(*task), options) + "\n";
        deleted.push_back(taskJson(*task));
    }
    if (!options.dryRun) {
        for (GTask* task : tasks) deleteTask(*task, options.keepSubtasks);
        program.save();
    }
    if (program.options.json) return program.printData(jsonText(deleted));
    program.print(lines);
}

}  // namespace

void addTaskDeleteCommand(CLI::App& noun, Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = *noun.add_subcommand("delete", translated("Delete tasks with all tasks below them"));
    command.add_option("TASK", options->tasks, translated("One task or several"))->required();
    command.add_flag("--keep-subtasks", options->keepSubtasks, translated("Tasks below move up instead"));
    command.add_flag("--dry-run", options->dryRun, translated("Only say what would go"));
    command.callback([&program, options] { deleteTasks(program, *options); });
}

}  // namespace corvane
