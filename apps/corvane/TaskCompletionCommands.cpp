// `corvane task done` and `task undone`.
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/host/TaskDescription.h"
#include "apps/host/TaskEditing.h"

namespace corvane {
namespace {

using Change = CompletionResult (*)(GTask&);

std::string sentence(const GTask& task, const CompletionResult& result, bool isDone) {
    const std::string name = quotedName(task.name());
    if (!result.isChanged) {
        return isDone ? translated("%@ was done already", name) : translated("%@ was open already", name);
    }
    std::vector<std::string> facts = {isDone ? translated("Done: %@", name)
                                             : translated("Open again: %@", name)};
    if (result.nextDueDate) facts.push_back(translated("next due %@", shownText(dueInWords(task))));
    if (result.otherTasks > 0) facts.push_back(translated("%d more with it", result.otherTasks));
    return joined(facts);
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

void addChange(CLI::App& noun, Program& program, const char* verb, const std::string& help, Change change,
               bool isDone) {
    const auto names = std::make_shared<std::vector<std::string>>();
    CLI::App& command = *noun.add_subcommand(verb, help);
    command.add_option("TASK", *names, translated("One task or several"))->required();
    command.callback([&program, names, change, isDone] { changeTasks(program, *names, change, isDone); });
}

}  // namespace

void addTaskCompletionCommands(CLI::App& noun, Program& program) {
    constexpr bool kDoneTasks = true;
    addChange(noun, program, "done", translated("Complete tasks; repeating ones move on"), completeTask,
              kDoneTasks);
    addChange(noun, program, "undone", translated("Open completed tasks again"), reopenTask, !kDoneTasks);
}

}  // namespace corvane
