// `corvane task done` and `task undone`.
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/host/TaskDescription.h"
#include "apps/host/TaskEditing.h"

namespace corvane {
namespace {

using Change = CompletionResult (*)(GTask&);

std::string sentence(const GTask& task, const CompletionResult& result, bool isDone) {
    std::string text = quotedName(task.name());
    if (!result.isChanged) return text + (isDone ? " was done already" : " was open already");
    text = (isDone ? "Done: " : "Open again: ") + text;
    if (result.nextDueDate) text += ", next due " + shownText(dueInWords(task));
    if (result.otherTasks > 0) text += ", " + std::to_string(result.otherTasks) + " more with it";
    return text;
}

void changeTasks(Program& program, const std::vector<std::string>& names, Change change, bool isDone) {
    GSData& data = program.store();
    const std::vector<GTask*> tasks =
        tasksNamed(data, names, isDone ? Prefer::kOpenTasks : Prefer::kDoneTasks);
    for (GTask* task : tasks) changeable(*task);
    std::string lines;
    // One that a task before it has taken along is said to be so.
    for (GTask* task : tasks) lines += sentence(*task, change(*task), isDone) + "\n";
    program.save();
    if (!program.options.json) return program.print(lines);
    Json changed = Json::array();
    for (const GTask* task : tasks) changed.push_back(taskJson(*task));
    program.printData(jsonText(changed));
}

void addChange(CLI::App& noun, Program& program, const char* verb, const char* help, Change change,
               bool isDone) {
    const auto names = std::make_shared<std::vector<std::string>>();
    CLI::App& command = *noun.add_subcommand(verb, help);
    command.add_option("TASK", *names, "One task or several")->required();
    command.callback([&program, names, change, isDone] { changeTasks(program, *names, change, isDone); });
}

}  // namespace

void addTaskCompletionCommands(CLI::App& noun, Program& program) {
    constexpr bool kDoneTasks = true;
    addChange(noun, program, "done", "Complete tasks; repeating ones move on", completeTask, kDoneTasks);
    addChange(noun, program, "undone", "Open completed tasks again", reopenTask, !kDoneTasks);
}

}  // namespace corvane
