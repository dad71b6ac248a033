// `corvane account`: the verbs of accounts.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/host/Places.h"
#include "model/Accounts.h"

namespace corvane {
namespace {

struct AccountOptions {
    std::string account;
    std::string name;
    int position = 0;  ///< counted from 1; 0: at the end
    bool dryRun = false;
};

void printChangedAccount(Program& program, const GUser& account, const std::string& sentence) {
    if (program.options.json) return program.printData(jsonText(accountJson(account)));
    program.printLine(sentence);
}

void addAccount(Program& program, const AccountOptions& options) {
    const std::u16string name = titleFromArgument(options.name);
    GSData& data = program.storeToChange();
    const bool isFirst = orderedAccounts(data.viewContext()).empty();
    GUser& account = GUser::insertNewAccountToContext(data.viewContext(), options.position - 1);
    account.setName(name);
    account.setIsDefault(isFirst);
    program.save();
    printChangedAccount(program, account, translated("Added the account %@", quotedName(account.name())));
}

std::string countedLists(const GUser& account) {
    return translatedCount("1 list", "%d lists", account.orderedLists().size());
}

std::string kindOf(const GUser& account) {
    if (account.accountType() == kLocalAccountType) return translated("on this device");
    if (account.accountType() == kUnlistedAccountType) return translated("unlisted");
    return translated("server account");
}

void showAccounts(Program& program, const AccountOptions&) {
    GSData& data = program.store();
    const GUser* defaultOne = defaultAccount(data.viewContext());
    Json json = Json::array();
    std::string lines;
    std::size_t number = 0;
    for (const GUser* account : accountsInOrder(data.viewContext())) {
        std::vector<std::string> facts = {kindOf(*account), countedLists(*account)};
        if (account == defaultOne) facts.push_back(translated("default"));
        lines += std::to_string(++number) + " " + shownName(account->name()) + "  " + joined(facts) + "\n";
        json.push_back(accountJson(*account));
    }
    if (program.options.json) return program.printData(jsonText(json));
    program.print(lines.empty() ? translated("No accounts.") + "\n" : lines);
}

void renameAccount(Program& program, const AccountOptions& options) {
    GUser& account = accountNamed(program.store(), options.account);
    const std::string before = quotedName(account.name());
    account.setName(titleFromArgument(options.name));
    program.save();
    printChangedAccount(program, account,
                        translated("Renamed %1$@ to %2$@", before, quotedName(account.name())));
}

void refuseUnlisted(const GUser& account) {
    if (account.accountType() == kUnlistedAccountType) {
        throw CommandFailure(
            translated("the account %@ is unlisted and stays as it is", quotedName(account.name())));
    }
}

void makeDefault(Program& program, const AccountOptions& options) {
    GSData& data = program.store();
    GUser& account = accountNamed(data, options.account);
    refuseUnlisted(account);
    for (GUser* other : orderedAccounts(data.viewContext())) other->setIsDefault(other == &account);
    program.save();
    printChangedAccount(program, account,
                        translated("%@ is the default account", quotedName(account.name())));
}

// The model clears the name along with the credential; what stays on the device keeps what its owner calls
// it.
void makeLocal(GSData& data, GUser& account) {
    const std::u16string name(account.name().value_or(u""));
    const std::int16_t position = account.displayOrder();
    account.makeAccountLocal();
    account.setName(name);
    if (orderedAccounts(data.viewContext()).size() > 1) account.setDisplayOrder(position);
}

void makeAccountLocal(Program& program, const AccountOptions& options) {
    GSData& data = program.store();
    GUser& account = accountNamed(data, options.account);
    refuseUnlisted(account);
    makeLocal(data, account);
    program.save();
    printChangedAccount(program, account,
                        translated("%@ is kept on this device only", quotedName(account.name())));
}

std::size_t countOfTasks(const GUser& account) {
    std::size_t count = 0;
    for (const GList* list : account.orderedLists()) count += list->orderedAllTasks().size();
    return count;
}

const char* sentenceOfDeletion(bool isLast, bool isDryRun) {
    if (isLast && isDryRun) {
        return textKey("%1$@ would stay, as the only account, on this device with %2$@");
    }
    if (isLast) return textKey("%1$@ stays, as the only account, on this device with %2$@");
    return isDryRun ? textKey("Would delete the account %1$@ with %2$@")
                    : textKey("Deleted the account %1$@ with %2$@");
}

// The last account is never deleted: it becomes local instead.
void deleteAccount(Program& program, const AccountOptions& options) {
    GSData& data = program.store();
    GUser& account = accountNamed(data, options.account);
    const bool isLast = orderedAccounts(data.viewContext()).size() == 1;
    if (isLast) refuseUnlisted(account);
    const std::string name = quotedName(account.name());
    const Json json = accountJson(account);
    const std::string contents =
        translated("%1$@ and %2$@", countedLists(account), countedTasks(countOfTasks(account)));
    if (!options.dryRun) {
        isLast ? makeLocal(data, account) : account.deleteAccount();
        program.save();
    }
    if (program.options.json) return program.printData(jsonText(json));
    program.printLine(translated(sentenceOfDeletion(isLast, options.dryRun), name, contents));
}

using Action = void (*)(Program&, const AccountOptions&);
using OptionAdder = std::function<void(CLI::App&, AccountOptions&)>;

void addVerb(CLI::App& noun, Program& program, const char* verb, const std::string& help, Action action,
             const OptionAdder& addOptions) {
    const auto options = std::make_shared<AccountOptions>();
    CLI::App& command = *noun.add_subcommand(verb, help);
    addOptions(command, *options);
    command.callback([&program, options, action] { action(program, *options); });
}

void addAccountArgument(CLI::App& command, AccountOptions& options) {
    command
        .add_option("ACCOUNT", options.account,
                    translated("An account: name, number of \"account list\" or identifier"))
        ->required();
}

void addNameArgument(CLI::App& command, AccountOptions& options) {
    command.add_option("NAME", options.name, translated("Its name"))->required();
}

}  // namespace

void addAccountCommands(CLI::App& app, Program& program) {
    CLI::App& noun = *app.add_subcommand("account", translated("Add, show and change accounts"));
    noun.require_subcommand(1);
    addVerb(noun, program, "add", translated("Add an account on this device"), addAccount,
            [](CLI::App& command, AccountOptions& options) {
                addNameArgument(command, options);
                command.add_option("--position", options.position, translated("From 1, else at the end"))
                    ->check(CLI::Range(1, 32'768));
            });
    addVerb(noun, program, "list", translated("Show the accounts and number them"), showAccounts,
            [](CLI::App&, AccountOptions&) {});
    addVerb(noun, program, "rename", translated("Rename an account"), renameAccount,
            [](CLI::App& command, AccountOptions& options) {
                addAccountArgument(command, options);
                addNameArgument(command, options);
            });
    addVerb(noun, program, "default", translated("Make an account the default"), makeDefault,
            addAccountArgument);
    addVerb(noun, program, "local", translated("Keep an account on this device only, without its server"),
            makeAccountLocal, addAccountArgument);
    addVerb(noun, program, "delete", translated("Delete an account with its lists and tasks"), deleteAccount,
            [](CLI::App& command, AccountOptions& options) {
                addAccountArgument(command, options);
                command.add_flag("--dry-run", options.dryRun, translated("Only say what would go"));
            });
}

}  // namespace corvane
