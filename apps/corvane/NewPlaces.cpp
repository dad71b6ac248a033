#include "apps/corvane/NewPlaces.h"

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreNames.h"
#include "apps/host/Places.h"
#include "model/Accounts.h"

namespace corvane {
namespace {

GList& listForNewTask(GSData& data, const PlaceOptions& options) {
    GUser* account = options.account ? &accountNamed(data, *options.account) : nullptr;
    if (options.list) return listNamed(data, *options.list, account);
    return account ? defaultListOf(*account) : listForNewTasks(data.viewContext());
}

GTask* lastOther(const std::vector<GTask*>& siblings, const GTask* moved) {
    for (auto sibling = siblings.rbegin(); sibling != siblings.rend(); ++sibling) {
        if (*sibling != moved) return *sibling;
    }
    return nullptr;
}

/// Where a task or the named list leads.
NewPlace placeOf(GSData& data, GList* ownList, const GTask* moved, const PlaceOptions& options) {
    if (options.after) {
        GTask& previous = taskNamed(data, *options.after);
        return {previous.list(), previous.parentTask(), &previous};
    }
    NewPlace place;
    if (options.parent) {
        place.parent = &taskNamed(data, *options.parent);
        place.list = place.parent->list();
    } else {
        place.list = ownList && !options.list && !options.account ? ownList : &listForNewTask(data, options);
    }
    if (options.isFirst) return place;
    place.previous = lastOther(
        place.parent ? place.parent->orderedSubTasks(kCompletedToo) : place.list->orderedRootTasks(), moved);
    return place;
}

void requireList(const NewPlace& place) {
    if (!place.list) throw CommandFailure(translated("that task is in no list; see corvane store check"));
}

}  // namespace

void addPlaceOptions(CLI::App& command, PlaceOptions& options) {
    CLI::Option* list =
        command.add_option("--list", options.list, translated("A list, else the default one"));
    CLI::Option* account =
        command.add_option("--account", options.account, translated("An account, else the default one"));
    CLI::Option* parent = command.add_option("--parent", options.parent, translated("A task to stand below"));
    CLI::Option* after = command.add_option("--after", options.after, translated("A task to stand behind"));
    CLI::Option* first =
        command.add_flag("--first", options.isFirst, translated("Before all others of its level"));
    parent->option_text("TASK")->excludes(list, account);
    after->option_text("TASK")->excludes(list, account, parent, first);
    list->option_text("LIST");
    account->option_text("ACCOUNT");
}

NewPlace placeForNewTask(GSData& data, const PlaceOptions& options) {
    const NewPlace place = placeOf(data, nullptr, nullptr, options);
    requireList(place);
    return place;
}

NewPlace placeForTask(GSData& data, const GTask& task, const PlaceOptions& options) {
    const NewPlace place = placeOf(data, task.list(), &task, options);
    requireList(place);
    return place;
}

GUser& accountOrDefault(GSData& data, const std::optional<std::string>& name) {
    if (name) return accountNamed(data, *name);
    GUser* account = defaultAccount(data.viewContext());
    if (!account)
        throw CommandFailure(translated("there is no account yet; make one with: corvane account add NAME"));
    return *account;
}

}  // namespace corvane
