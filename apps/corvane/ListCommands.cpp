// `corvane list`: the verbs of task lists.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/NewPlaces.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/host/ColorText.h"
#include "apps/host/Places.h"
#include "model/Accounts.h"

namespace corvane {
namespace {

struct ListOptions {
    std::string list;
    std::string value;
    std::optional<std::string> account;
    std::optional<std::string> color;
    int position = 0;  ///< counted from 1; 0: at the end
    bool dryRun = false;
    bool isOff = false;
};
using Options = std::shared_ptr<ListOptions>;

std::string accountSuffix(const GList& list) {
    return list.user() ? " of " + quotedName(list.user()->name()) : "";
}

void printChangedList(Program& program, const GList& list, const std::string& sentence) {
    if (program.options.json) return program.printData(jsonText(listJson(list)));
    program.printLine(sentence);
}

std::optional<Color> colorFromArgument(const std::string& text) {
    if (text == "none") return std::nullopt;
    const std::string digits = text.starts_with('#') ? text.substr(1) : text;
    const bool isColor = (digits.size() == 6 || digits.size() == 8) &&
                         digits.find_first_not_of("0123456789abcdefABCDEF") == digits.npos;
    if (!isColor) {
        throw CommandFailure("\"" + text + "\" is no colour; write it like #1f7a8c, or none", kUsage);
    }
    const auto component = [&](std::size_t i) { return std::stoi(digits.substr(i, 2), nullptr, 16) / 255.0; };
    return Color::rgb(component(0), component(2), component(4), digits.size() == 8 ? component(6) : 1);
}

void addList(Program& program, const ListOptions& options) {
    const std::u16string name = titleFromArgument(options.value);
    const auto color = options.color ? colorFromArgument(*options.color) : std::nullopt;
    GSData& data = program.storeToChange();
    const bool isFresh = !options.account && !defaultAccount(data.viewContext());
    GUser& account = isFresh ? makeFirstAccount(data.viewContext()) : accountOrDefault(data, options.account);
    GList& list = makeList(account, name, options.position - 1);
    if (color) list.setColor(color);
    list.updateLastModified();
    program.save();
    printChangedList(program, list, "Added the list " + quotedName(list.name()) + accountSuffix(list));
}

std::string lineOfList(const GList& list, std::size_t number) {
    std::string line = std::to_string(number) + " " +
                       (list.name() && !list.name()->empty() ? shownText(*list.name()) : "(untitled)");
    if (number < 10) line.insert(0, " ");
    const auto tasks = list.orderedAllTasks();
    const auto open = std::ranges::count_if(tasks, [](const GTask* task) { return !task->completed(); });
    line += "  " + std::to_string(open) + " open of " + std::to_string(tasks.size());
    if (list.isDefault()) line += ", default";
    if (list.isIsolated()) line += ", isolated";
    if (list.isReadonly()) line += ", read-only";
    if (const auto color = list.color()) line += ", " + textOfColor(*color);
    return line;
}

void showLists(Program& program, const ListOptions& options) {
    GSData& data = program.store();
    const GUser* chosen = options.account ? &accountNamed(data, *options.account) : nullptr;
    Json json = Json::array();
    std::string lines;
    const GUser* account = nullptr;
    std::size_t number = 0;
    for (const GList* list : listsInOrder(data.viewContext())) {
        ++number;  // as listNamed counts, also where only one account shows
        if (chosen && list->user() != chosen) continue;
        if (list->user() != account) {
            account = list->user();
            lines += (account->name() ? shownText(*account->name()) : "(untitled)") + "\n";
        }
        lines += lineOfList(*list, number) + "\n";
        json.push_back(listJson(*list));
    }
    if (program.options.json) return program.printData(jsonText(json));
    program.print(lines.empty() ? "No lists.\n" : lines);
}

void renameList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    refuseReadonly(list);
    const std::string before = quotedName(list.name());
    list.setName(titleFromArgument(options.value));
    list.setUserChangedName(true);
    list.updateLastModified();
    program.save();
    printChangedList(program, list, "Renamed " + before + " to " + quotedName(list.name()));
}

void setListColor(Program& program, const ListOptions& options) {
    const std::optional<Color> color = colorFromArgument(options.value);
    GList& list = listNamed(program.store(), options.list);
    list.setColor(color);
    list.updateLastModified();
    program.save();
    printChangedList(
        program, list,
        quotedName(list.name()) + (color ? " has the colour " + textOfColor(*color) : " has no colour"));
}

void makeDefault(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    list.setAsDefault(true);
    program.save();
    printChangedList(program, list, quotedName(list.name()) + " is the default list" + accountSuffix(list));
}

void moveList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    list.moveListToDisplayOrder(options.position - 1);
    program.save();
    printChangedList(program, list, "Moved " + quotedName(list.name()));
}

void deleteList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    refuseReadonly(list);
    const std::string name = quotedName(list.name()) + accountSuffix(list);
    const std::size_t count = list.orderedAllTasks().size();
    const Json json = listJson(list);
    if (!options.dryRun) {
        list.deleteList(kAwaitSynchronisation);
        program.save();
    }
    if (program.options.json) return program.printData(jsonText(json));
    program.printLine((options.dryRun ? "Would delete the list " : "Deleted the list ") + name +
                      (count == 0 ? "" : " with " + countedTasks(count)));
}

void clearCompleted(Program& program, const ListOptions& options) {
    GSData& data = program.store();
    const std::vector<GList*> lists =
        options.list.empty() ? listsInOrder(data.viewContext()) : std::vector{&listNamed(data, options.list)};
    std::size_t count = 0;
    for (GList* list : lists) {
        const auto completed = list->completedTasks();
        if (completed.empty() || (list->isReadonly() && options.list.empty())) continue;
        refuseReadonly(*list);
        count += completed.size();
        if (options.dryRun) continue;
        for (GTask* task : completed) task->updateLastModified();
        list->deleteCompletedTasks();
    }
    if (!options.dryRun) program.save();
    if (program.options.json)
        return program.printData(jsonText(Json{
            {"deleted", count}
        }));
    program.printLine((options.dryRun ? "Would delete " : "Deleted ") +
                      (count == 1 ? "1 completed task" : std::to_string(count) + " completed tasks"));
}

void isolateList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    list.setIsIsolated(!options.isOff);
    list.updateLastModified();
    program.save();
    printChangedList(program, list,
                     quotedName(list.name()) + (options.isOff ? " takes part in all views"
                                                              : " is kept out of today and other views"));
}

void orderList(Program& program, const ListOptions& options) {
    const std::vector<std::string> names = {"manual", "priority", "due"};
    const auto found = std::ranges::find(names, options.value);
    GList& list = listNamed(program.store(), options.list);
    list.setTasksOrder(static_cast<std::int16_t>(found - names.begin()));
    list.updateLastModified();
    program.save();
    printChangedList(program, list,
                     "The tasks of " + quotedName(list.name()) + " are ordered: " + options.value);
}

using Action = void (*)(Program&, const ListOptions&);

CLI::App& addVerb(CLI::App& noun, Program& program, const char* verb, const char* help, Action action,
                  const std::function<void(CLI::App&, ListOptions&)>& addOptions) {
    const auto options = std::make_shared<ListOptions>();
    CLI::App& command = *noun.add_subcommand(verb, help);
    addOptions(command, *options);
    command.callback([&program, options, action] { action(program, *options); });
    return command;
}

void addListArgument(CLI::App& command, ListOptions& options) {
    command.add_option("LIST", options.list, "A list: name, number of \"list list\" or identifier")
        ->required();
}

void addAccountOption(CLI::App& command, ListOptions& options) {
    command.add_option("--account", options.account, "An account")->option_text("ACCOUNT");
}

void addDryRun(CLI::App& command, ListOptions& options) {
    command.add_flag("--dry-run", options.dryRun, "Only say what would go");
}

void addNewListVerb(CLI::App& noun, Program& program) {
    addVerb(noun, program, "add", "Add a list", addList, [](CLI::App& command, ListOptions& options) {
        command.add_option("NAME", options.value, "Its name")->required();
        addAccountOption(command, options);
        command.add_option("--color", options.color, "Like #1f7a8c")->option_text("COLOR");
        command.add_option("--position", options.position, "From 1, else at the end")
            ->check(CLI::Range(1, 32'768));
    });
}

void addValueVerbs(CLI::App& noun, Program& program) {
    addVerb(noun, program, "rename", "Rename a list", renameList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("NAME", options.value, "The new name")->required();
            });
    addVerb(noun, program, "color", "Give a list a colour", setListColor,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("COLOR", options.value, "Like #1f7a8c, or none")->required();
            });
    addVerb(noun, program, "move", "Move a list among those of its account", moveList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("POSITION", options.position, "From 1")
                    ->required()
                    ->check(CLI::Range(1, 32'768));
            });
    addVerb(noun, program, "order", "Choose how a list's tasks are ordered", orderList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("ORDER", options.value, "manual, priority or due")
                    ->required()
                    ->check(CLI::IsMember(std::vector<std::string>{"manual", "priority", "due"}));
            });
}

}  // namespace

void addListCommands(CLI::App& app, Program& program) {
    CLI::App& noun = *app.add_subcommand("list", "Add, show and change task lists");
    noun.require_subcommand(1);
    addNewListVerb(noun, program);
    addVerb(noun, program, "list", "Show the lists and number them", showLists, addAccountOption);
    addValueVerbs(noun, program);
    addVerb(noun, program, "default", "Make a list its account's default", makeDefault, addListArgument);
    addVerb(noun, program, "isolate", "Keep a list out of today and other views", isolateList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_flag("--off", options.isOff, "Let it take part again");
            });
    addVerb(noun, program, "delete", "Delete a list with its tasks", deleteList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                addDryRun(command, options);
            });
    addVerb(noun, program, "clear-completed", "Delete the completed tasks of a list, or of all lists",
            clearCompleted, [](CLI::App& command, ListOptions& options) {
                command.add_option("LIST", options.list, "A list");
                addDryRun(command, options);
            });
}

}  // namespace corvane
