// The options that give a task its fields, shared by adding and editing.
#pragma once

#include <optional>
#include <string>

#include "model/GTask.h"

namespace CLI {
class App;
}

namespace corvane {

struct TaskFieldOptions {
    std::optional<std::string> notes;  ///< "-": standard input
    std::optional<std::string> due;    ///< "none" takes it away
    std::optional<std::string> repeat;
    std::optional<std::string> alert;
    std::optional<int> priority;

    bool isEmpty() const { return !notes && !due && !repeat && !alert && !priority; }
};

void addFieldOptions(CLI::App& command, TaskFieldOptions& options);

/// Sets what was given, as a user's edit. @throws CommandFailure (wrong usage) for what cannot be read
void applyFields(GTask& task, const TaskFieldOptions& options);

/// Texts that come from an option: empty ones are none.
void setNotesText(GTask& task, const std::u16string& notes);

}  // namespace corvane
