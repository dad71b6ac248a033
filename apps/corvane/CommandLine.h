// The command line: nouns then verbs, each command in a file of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "apps/corvane/Program.h"

namespace CLI {
class App;
}

namespace corvane {

// One function a noun: adds its commands to the parser. A command's callback does the work.
void addTodayCommand(CLI::App& app, Program& program);
void addDemoCommand(CLI::App& app, Program& program);
void addAccountCommands(CLI::App& app, Program& program);
void addListCommands(CLI::App& app, Program& program);
void addTaskCommands(CLI::App& app, Program& program);
void addTasksCommands(CLI::App& app, Program& program);
void addConfigCommand(CLI::App& app, Program& program);
void addExplainCommand(CLI::App& app, Program& program);
void addExportCommands(CLI::App& app, Program& program);
void addStoreCommands(CLI::App& app, Program& program);
void addCompleteCommand(CLI::App& app, Program& program);

/// Adds the global options, and the commands: of one noun where the arguments begin with it, else all.
void addCommandLine(CLI::App& app, Program& program, int argumentCount, const char* const* arguments);

/// The keys that `corvane config` knows, in its order.
std::vector<std::string> settingKeys();

/// One line on standard error for people; what a terminal would obey in it is made harmless.
void say(std::string_view message);

/// Parses and runs. Failures are said in one line on standard error.
/// @return the exit code of the process
int runCommandLine(int argumentCount, const char* const* arguments);

}  // namespace corvane
