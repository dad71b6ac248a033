// The verbs of `corvane task`.
#pragma once

#include <string>
#include <vector>

#include "apps/corvane/Program.h"

namespace CLI {
class App;
}

namespace corvane {

void addTaskAddCommand(CLI::App& noun, Program& program);
void addTaskListingCommands(CLI::App& noun, Program& program);
void addTaskCompletionCommands(CLI::App& noun, Program& program);
void addTaskEditCommands(CLI::App& noun, Program& program);
void addTaskPlaceCommands(CLI::App& noun, Program& program);
void addTaskDeleteCommand(CLI::App& noun, Program& program);

/// Tells of tasks that were changed: as JSON the tasks themselves, an array where a command takes several.
void printChangedTask(Program& program, const GTask& task, const std::string& sentence);

/// @throws CommandFailure for a list that its server keeps as it is
void refuseReadonly(const GList& list);
/// The task, where its list takes changes.
GTask& changeable(GTask& task);

/// "task" or "3 tasks".
std::string countedTasks(std::size_t count);

}  // namespace corvane
