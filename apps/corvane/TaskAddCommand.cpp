// `corvane task add`.
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
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
    const std::string name = quotedName(task.name());
    const std::string list = quotedName(task.list()->name());
    const std::u16string due = dueInWords(task);
    if (due.empty()) return translated("Added %1$@ to %2$@ (%3$@)", name, list, shortIdentifier(task));
    return translated("Added %1$@ to %2$@, due %3$@ (%4$@)", name, list, shownText(due),
                      shortIdentifier(task));
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
    CLI::App& command = *noun.add_subcommand("add", translated("Add a task"));
    command
        .add_option("TITLE", options->title, translated("What there is to do; several words are one title"))
        ->required();
    addPlaceOptions(command, options->place);
    addFieldOptions(command, options->fields);
    command.callback([&program, options] { addTask(program, *options); });
}

}  // namespace corvane
