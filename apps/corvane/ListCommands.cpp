// `corvane list`: the verbs of task lists.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
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
        throw CommandFailure(translated("\"%@\" is no colour; write it like #1f7a8c, or none", text), kUsage);
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
    printChangedList(program, list, translated("Added the list %@", nameWithAccount(list)));
}

std::string lineOfList(const GList& list, std::size_t number) {
    const std::string place = (number < 10 ? " " : "") + std::to_string(number);
    const auto tasks = list.orderedAllTasks();
    const auto open = std::ranges::count_if(tasks, [](const GTask* task) { return !task->completed(); });
    std::vector<std::string> facts = {translated("%1$d open of %2$d", open, tasks.size())};
    if (list.isDefault()) facts.push_back(translated("default"));
    if (list.isIsolated()) facts.push_back(translated("isolated"));
    if (list.isReadonly()) facts.push_back(translated("read-only"));
    if (const auto color = list.color()) facts.push_back(textOfColor(*color));
    return place + " " + shownName(list.name()) + "  " + joined(facts);
}

void showLists(Program& program, const ListOptions& options) {
    GSData& data = program.store();
    const GUser* chosen = options.account ? &accountNamed(data, *options.account) : nullptr;
    Json json = Json::array();
    std::string lines;
    std::optional<const GUser*> account;
    std::size_t number = 0;
    for (const GList* list : listsInOrder(data.viewContext())) {
        ++number;  // as listNamed counts, also where only one account shows
        if (chosen && list->user() != chosen) continue;
        if (list->user() != account) {
            account = list->user();
            lines += (*account ? shownName((*account)->name()) : translated("(no account)")) + "\n";
        }
        lines += lineOfList(*list, number) + "\n";
        json.push_back(listJson(*list));
    }
    if (program.options.json) return program.printData(jsonText(json));
    program.print(lines.empty() ? translated("No lists.") + "\n" : lines);
}

void renameList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    refuseReadonly(list);
    const std::string before = quotedName(list.name());
    list.setName(titleFromArgument(options.value));
    list.setUserChangedName(true);
    list.updateLastModified();
    program.save();
    printChangedList(program, list, translated("Renamed %1$@ to %2$@", before, quotedName(list.name())));
}

void setListColor(Program& program, const ListOptions& options) {
    const std::optional<Color> color = colorFromArgument(options.value);
    GList& list = listNamed(program.store(), options.list);
    list.setColor(color);
    list.updateLastModified();
    program.save();
    const std::string name = quotedName(list.name());
    printChangedList(program, list,
                     color ? translated("%1$@ has the colour %2$@", name, textOfColor(*color))
                           : translated("%@ has no colour", name));
}

std::string sentenceOfDefault(const GList& list) {
    const std::string name = quotedName(list.name());
    if (!list.user()) return translated("%@ is the default list", name);
    return translated("%1$@ is the default list of %2$@", name, quotedName(list.user()->name()));
}

void makeDefault(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    list.setAsDefault(true);
    program.save();
    printChangedList(program, list, sentenceOfDefault(list));
}

void moveList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    list.moveListToDisplayOrder(options.position - 1);
    program.save();
    printChangedList(program, list, translated("Moved %@", quotedName(list.name())));
}

std::string sentenceOfDeletion(const std::string& name, std::size_t tasks, bool isDryRun) {
    if (tasks == 0)
        return isDryRun ? translated("Would delete the list %@", name)
                        : translated("Deleted the list %@", name);
    return translated(isDryRun ? textKey("Would delete the list %1$@ with %2$@")
                               : textKey("Deleted the list %1$@ with %2$@"),
                      name, countedTasks(tasks));
}

void deleteList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    refuseReadonly(list);
    const std::string name = nameWithAccount(list);
    const std::size_t count = list.orderedAllTasks().size();
    const Json json = listJson(list);
    if (!options.dryRun) {
        list.deleteList(kAwaitSynchronisation);
        program.save();
    }
    if (program.options.json) return program.printData(jsonText(json));
    program.printLine(sentenceOfDeletion(name, count, options.dryRun));
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
    program.printLine(
        options.dryRun
            ? translatedCount("Would delete 1 completed task", "Would delete %d completed tasks", count)
            : translatedCount("Deleted 1 completed task", "Deleted %d completed tasks", count));
}

void isolateList(Program& program, const ListOptions& options) {
    GList& list = listNamed(program.store(), options.list);
    list.setIsIsolated(!options.isOff);
    list.updateLastModified();
    program.save();
    printChangedList(program, list,
                     translated(options.isOff ? textKey("%@ takes part in all views")
                                              : textKey("%@ is kept out of today and other views"),
                                quotedName(list.name())));
}

void orderList(Program& program, const ListOptions& options) {
    const std::vector<std::string> names = {"manual", "priority", "due"};
    const auto found = std::ranges::find(names, options.value);
    GList& list = listNamed(program.store(), options.list);
    list.setTasksOrder(static_cast<std::int16_t>(found - names.begin()));
    list.updateLastModified();
    program.save();
    printChangedList(
        program, list,
        translated("The tasks of %1$@ are ordered: %2$@", quotedName(list.name()), options.value));
}

using Action = void (*)(Program&, const ListOptions&);

CLI::App& addVerb(CLI::App& noun, Program& program, const char* verb, const std::string& help, Action action,
                  const std::function<void(CLI::App&, ListOptions&)>& addOptions) {
    const auto options = std::make_shared<ListOptions>();
    CLI::App& command = *noun.add_subcommand(verb, help);
    addOptions(command, *options);
    command.callback([&program, options, action] { action(program, *options); });
    return command;
}

void addListArgument(CLI::App& command, ListOptions& options) {
    command
        .add_option("LIST", options.list, translated("A list: name, number of \"list list\" or identifier"))
        ->required();
}

void addAccountOption(CLI::App& command, ListOptions& options) {
    command.add_option("--account", options.account, translated("An account"))->option_text("ACCOUNT");
}

void addDryRun(CLI::App& command, ListOptions& options) {
    command.add_flag("--dry-run", options.dryRun, translated("Only say what would go"));
}

void addNewListVerb(CLI::App& noun, Program& program) {
    addVerb(
        noun, program, "add", translated("Add a list"), addList, [](CLI::App& command, ListOptions& options) {
            command.add_option("NAME", options.value, translated("Its name"))->required();
            addAccountOption(command, options);
            command.add_option("--color", options.color, translated("Like #1f7a8c"))->option_text("COLOR");
            command.add_option("--position", options.position, translated("From 1, else at the end"))
                ->check(CLI::Range(1, 32'768));
        });
}

void addValueVerbs(CLI::App& noun, Program& program) {
    addVerb(noun, program, "rename", translated("Rename a list"), renameList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("NAME", options.value, translated("The new name"))->required();
            });
    addVerb(noun, program, "color", translated("Give a list a colour"), setListColor,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("COLOR", options.value, translated("Like #1f7a8c, or none"))->required();
            });
    addVerb(noun, program, "move", translated("Move a list among those of its account"), moveList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("POSITION", options.position, translated("From 1"))
                    ->required()
                    ->check(CLI::Range(1, 32'768));
            });
    addVerb(noun, program, "order", translated("Choose how a list's tasks are ordered"), orderList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_option("ORDER", options.value, translated("manual, priority or due"))
                    ->required()
                    ->check(CLI::IsMember(std::vector<std::string>{"manual", "priority", "due"}));
            });
}

}  // namespace

void addListCommands(CLI::App& app, Program& program) {
    CLI::App& noun = *app.add_subcommand("list", translated("Add, show and change task lists"));
    noun.require_subcommand(1);
    addNewListVerb(noun, program);
    addVerb(noun, program, "list", translated("Show the lists and number them"), showLists, addAccountOption);
    addValueVerbs(noun, program);
    addVerb(noun, program, "default", translated("Make a list its account's default"), makeDefault,
            addListArgument);
    addVerb(noun, program, "isolate", translated("Keep a list out of today and other views"), isolateList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                command.add_flag("--off", options.isOff, translated("Let it take part again"));
            });
    addVerb(noun, program, "delete", translated("Delete a list with its tasks"), deleteList,
            [](CLI::App& command, ListOptions& options) {
                addListArgument(command, options);
                addDryRun(command, options);
            });
    addVerb(noun, program, "clear-completed",
            translated("Delete the completed tasks of a list, or of all lists"), clearCompleted,
            [](CLI::App& command, ListOptions& options) {
                command.add_option("LIST", options.list, translated("A list"));
                addDryRun(command, options);
            });
}

}  // namespace corvane
