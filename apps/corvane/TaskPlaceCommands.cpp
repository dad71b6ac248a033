// `corvane task move` and `task copy`.
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/NewPlaces.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/host/TaskEditing.h"
#include "model/TaskTree.h"

namespace corvane {
namespace {

enum class Action { kMove, kCopy };

struct Options {
    std::string task;
    PlaceOptions place;
};

// A place below one of its own subtasks is no contradiction: its subtasks then move up to where it was.
void refuseItself(const GTask& task, const NewPlace& place) {
    const bool isBehindItsSubTask = place.previous && place.previous->parentTask() == &task;
    if (place.parent == &task || place.previous == &task || isBehindItsSubTask) {
        throw CommandFailure(translated("a task cannot move to a place below itself"));
    }
}

GTask& movedTask(GTask& task, const NewPlace& place) {
    refuseItself(task, place);
    return moveTask(task, *place.list, place.parent, place.previous);
}

GTask& copiedTask(GTask& task, const NewPlace& place) {
    GTask& copy = task.cloneToList(*place.list, place.parent, place.previous);
    for (const TaskInTree& entry : liveTree(copy)) entry.task->updateLastModified();
    return copy;
}

std::string sentence(const GTask& task, Action action) {
    const bool isMoved = action == Action::kMove;
    const std::string name = quotedName(task.name());
    const std::string list = quotedName(task.list()->name());
    const std::size_t below = task.countTotalSubTasks();
    if (below == 0) {
        return translated(
            isMoved ? textKey("Moved %1$@ to %2$@ (%3$@)") : textKey("Copied %1$@ to %2$@ (%3$@)"), name,
            list, shortIdentifier(task));
    }
    return translated(isMoved ? textKey("Moved %1$@ to %2$@ with %3$@ below it (%4$@)")
                              : textKey("Copied %1$@ to %2$@ with %3$@ below it (%4$@)"),
                      name, list, countedTasks(below), shortIdentifier(task));
}

void placeTask(Program& program, const Options& options, Action action) {
    GSData& data = program.store();
    GTask& task = taskNamed(data, options.task);
    if (options.place.isEmpty() && action == Action::kMove) {
        throw CommandFailure(translated("say where to: --list, --account, --parent, --after or --first"),
                             kUsage);
    }
    if (action == Action::kMove) changeable(task);
    const NewPlace place = placeForTask(data, task, options.place);
    refuseReadonly(*place.list);
    GTask& result = action == Action::kMove ? movedTask(task, place) : copiedTask(task, place);
    program.save();
    printChangedTask(program, result, sentence(result, action));
}

void addPlacing(CLI::App& noun, Program& program, const char* verb, const std::string& help, Action action) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = *noun.add_subcommand(verb, help);
    command.add_option("TASK", options->task, translated("A task; the tasks below it go with it"))
        ->required();
    addPlaceOptions(command, options->place);
    command.callback([&program, options, action] { placeTask(program, *options, action); });
}

}  // namespace

void addTaskPlaceCommands(CLI::App& noun, Program& program) {
    addPlacing(noun, program, "move", translated("Move a task within its list or to another one"),
               Action::kMove);
    addPlacing(noun, program, "copy", translated("Copy a task, to the end of its list unless told otherwise"),
               Action::kCopy);
}

}  // namespace corvane
