#include "apps/corvane/TaskFieldOptions.h"

#include <iostream>
#include <iterator>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/Program.h"
#include "apps/host/AlertWords.h"
#include "apps/host/TaskEditing.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

/// What was read, or the failure with the reason why it was not.
template <class Result>
Result readOrFail(std::variant<Result, std::string> reading) {
    if (const auto* reason = std::get_if<std::string>(&reading)) throw CommandFailure(*reason, kUsage);
    return std::get<Result>(std::move(reading));
}

std::u16string notesFromArgument(const std::string& notes) {
    if (notes != "-") return textFromUtf8(notes);
    std::string input(std::istreambuf_iterator<char>(std::cin), {});
    if (input.ends_with('\n')) input.pop_back();
    return textFromUtf8(input);
}

}  // namespace

void addFieldOptions(CLI::App& command, TaskFieldOptions& options) {
    command
        .add_option("--due", options.due,
                    translated("When, like \"tomorrow 14:00\", friday, +3d or 2024-03-05"))
        ->option_text("DATE");
    command
        .add_option("--priority", options.priority, translated("Low from 30, medium from 40, high from 50"))
        ->check(CLI::Range(0, 99))
        ->option_text("0..99");
    command.add_option("--notes", options.notes, translated("Notes, \"-\" to read them from standard input"))
        ->option_text("TEXT");
    command.add_option("--repeat", options.repeat, translated("Like \"every 2 weeks on mon, fri\", or none"))
        ->option_text("RULE");
    command
        .add_option("--alert", options.alert, translated("A time before like 15m, a time or a date, or none"))
        ->option_text("WHEN");
}

void setNotesText(GTask& task, const std::u16string& notes) {
    task.setNotes(notes.empty() ? std::nullopt : std::optional<std::u16string_view>(notes));
}

void applyFields(GTask& task, const TaskFieldOptions& options) {
    if (options.notes) setNotesText(task, notesFromArgument(*options.notes));
    if (options.priority) task.setPriority(*options.priority);
    if (options.due) setDue(task, readOrFail(dueFromWords(textFromUtf8(*options.due))));
    if (options.repeat) setRepeat(task, readOrFail(repeatFromWords(textFromUtf8(*options.repeat))));
    if (options.alert) {
        setAlert(task, readOrFail(alertFromWords(textFromUtf8(*options.alert), task.dueDate())));
    }
    if (options.notes || options.priority) task.updateLastModified();
}

}  // namespace corvane
