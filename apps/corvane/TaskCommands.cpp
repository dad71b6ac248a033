#include "apps/corvane/TaskCommands.h"

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"

namespace corvane {

void printChangedTask(Program& program, const GTask& task, const std::string& sentence) {
    if (program.options.json) return program.printData(jsonText(taskJson(task)));
    program.printLine(sentence);
}

void refuseReadonly(const GList& list) {
    if (list.isReadonly())
        throw CommandFailure(translated("the list %@ is read-only", quotedName(list.name())));
}

GTask& changeable(GTask& task) {
    if (const GList* list = task.list()) refuseReadonly(*list);
    return task;
}

std::string countedTasks(std::size_t count) { return translatedCount("1 task", "%d tasks", count); }

void addTaskCommands(CLI::App& app, Program& program) {
    CLI::App& noun = *app.add_subcommand("task", translated("Add, show, change and complete tasks"));
    noun.require_subcommand(1);
    noun.footer(translated(
        "TASK is a number of the last \"task list\", an identifier like p12, or a piece of the title."));
    addTaskAddCommand(noun, program);
    addTaskListingCommands(noun, program);
    addTaskCompletionCommands(noun, program);
    addTaskEditCommands(noun, program);
    addTaskPlaceCommands(noun, program);
    addTaskDeleteCommand(noun, program);
}

}  // namespace corvane
