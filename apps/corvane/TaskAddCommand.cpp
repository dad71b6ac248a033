// `corvane task add`.
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/NewPlaces.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/corvane/TaskFieldOptions.h"
#include "apps/host/TaskDescription.h"
#include "model/Accounts.h"

namespace corvane {
namespace {

struct AddOptions {
    std::vector<std::string> title;
    PlaceOptions place;
    TaskFieldOptions fields;
};

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string sentence(const GTask& task) {
    std::string text = "Added " + quotedName(task.name()) + " to " + quotedName(task.list()->name());
    const std::u16string due = dueInWords(task);
    if (!due.empty()) text += ", due " + shownText(due);
    return text + " (" + shortIdentifier(task) + ")";
}

void addTask(Program& program, const AddOptions& options) {
    const std::u16string title = titleFromArgument(joined(options.title));
    GSData& data = program.storeToChange();
    const NewPlace place = placeForNewTask(data, options.place);
    refuseReadonly(*place.list);
    GTask& task = GTask::insertNewTaskToList(*place.list, place.parent, place.previous);
    task.setName(title);
    task.updateLastModified();
    applyFields(task, options.fields);
    program.save();
    printChangedTask(program, task, sentence(task));
}

}  // namespace

void addTaskAddCommand(CLI::App& noun, Program& program) {
    const auto options = std::make_shared<AddOptions>();
    CLI::App& command = *noun.add_subcommand("add", "Add a task");
    command.add_option("TITLE", options->title, "What there is to do; several words are one title")
        ->required();
    addPlaceOptions(command, options->place);
    addFieldOptions(command, options->fields);
    command.callback([&program, options] { addTask(program, *options); });
}

}  // namespace corvane
