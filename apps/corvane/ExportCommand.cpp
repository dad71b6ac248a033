// `corvane export` and `corvane import`: task lists to and from files.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/NewPlaces.h"
#include "apps/corvane/SelectedTrees.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskImport.h"
#include "apps/corvane/TaskQuery.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/Places.h"
#include "model/Accounts.h"
#include "platform/foundation/FileContents.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "text/HtmlEscaping.h"

namespace corvane {
namespace {

struct ExportOptions {
    TaskQueryOptions query;
    std::string title;
    std::optional<std::string> output;
    bool tree = false;
    bool html = false;
    bool page = false;
};

std::u16string pageAround(const std::u16string& fragment, const std::u16string& title) {
    const std::u16string name = gtm_stringByEscapingForHTML(title.empty() ? localizedString("Tasks") : title);
    return u"<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + name +
           u"</title>\n</head>\n<body>\n" + fragment + u"\n</body>\n</html>\n";
}

std::string exportedText(Program& program, const ExportOptions& options) {
    const std::vector<GTask*> tasks = fetchTasks(program, options.query);
    const std::u16string title = textFromUtf8(options.title);
    const std::optional<std::u16string_view> heading =
        title.empty() ? std::nullopt : std::optional<std::u16string_view>(title);
    const bool html = options.html || options.page;
    const std::u16string text =
        options.tree
            ? stringOfExportedTasks(selectedTrees(tasks, listsInOrder(program.store().viewContext())),
                                    heading, options.tree, html)
            : GSData::stringOfTasks(tasks, heading, options.tree, html);
    return utf8FromText(options.page ? pageAround(text, title) : text);
}

std::string_view withoutLastLineFeed(std::string_view text) {
    return text.ends_with('\n') ? text.substr(0, text.size() - 1) : text;
}

// Line by line as a terminal may have it.
std::string harmlessLines(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines += terminalUtf8(text.substr(0, end));
        if (end < text.size()) lines += '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// A file or another program gets the text as it is.
void printExport(Program& program, std::string_view text) {
    if (isatty(STDOUT_FILENO)) return program.printLine(harmlessLines(text));
    program.printData(text);
}

void runExport(Program& program, const ExportOptions& options) {
    const std::optional<std::string>& file = options.output;
    if (file && file->empty()) throw CommandFailure(translated("--output takes the name of a file"), kUsage);
    const std::string text = exportedText(program, options);
    if (!file || file == "-") return printExport(program, withoutLastLineFeed(text));
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const std::error_code error =
        writeFileAtomically(*file, std::span(bytes, text.size()), FileAccess::kByUmask);
    if (error)
        throw CommandFailure(translated("\"%1$@\" could not be written: %2$@", *file, error.message()));
}

struct ImportOptions {
    std::string file;
    std::string list;
    std::string account;
    bool dryRun = false;
};

constexpr std::size_t kLargestImport = std::size_t{64} << 20;

std::string contentsOfStandardInput() {
    std::string text;
    char piece[4096];
    while (const std::size_t count = std::fread(piece, 1, sizeof piece, stdin)) {
        text.append(piece, count);
        if (text.size() > kLargestImport)
            throw CommandFailure(translated("standard input is too large to import"));
    }
    if (std::ferror(stdin)) throw CommandFailure(translated("standard input could not be read"));
    return text;
}

std::string contents(const std::string& file) {
    if (file == "-") return contentsOfStandardInput();
    const auto read = contentsOfFile(file, kLargestImport);
    if (const auto* error = std::get_if<std::error_code>(&read)) {
        throw CommandFailure(translated("\"%1$@\" could not be read: %2$@", file, error->message()));
    }
    const auto& bytes = std::get<std::vector<std::uint8_t>>(read);
    return {bytes.begin(), bytes.end()};
}

GUser& accountForImport(GSData& data, const ImportOptions& options) {
    if (!options.account.empty()) return accountNamed(data, options.account);
    GUser* account = defaultAccount(data.viewContext());
    return account ? *account : makeFirstAccount(data.viewContext());
}

// The list named on the command line takes everything; otherwise each list of the file becomes a list, one of
// the same name taking its tasks, and tasks without a list go to the default list.
GList& listForImport(GSData& data, GUser& account, const ImportedList& imported,
                     const ImportOptions& options) {
    constexpr std::int32_t kAtTheEnd = -1;
    if (!options.list.empty()) return listNamed(data, options.list, &account);
    if (!imported.name || imported.name->empty()) {
        GList* list = account.defaultList();
        return list ? *list : makeList(account, localizedString("Tasks"), kAtTheEnd);
    }
    for (GList* list : account.orderedLists()) {
        if (list->name() == *imported.name) return *list;
    }
    return makeList(account, *imported.name, kAtTheEnd);
}

void addToStore(Program& program, const Import& import, const ImportOptions& options) {
    GSData& data = program.storeToChange();
    GUser& account = accountForImport(data, options);
    for (const ImportedList& list : import.lists) {
        if (list.tasks.empty()) continue;
        if (!addImportedTasks(listForImport(data, account, list, options), list.tasks)) {
            throw CommandFailure(translated("a list cannot hold so many tasks; nothing was imported"));
        }
    }
    program.save();
}

void runImport(Program& program, const ImportOptions& options) {
    const ImportResult result = importFromData(contents(options.file));
    if (const auto* problem = std::get_if<std::string>(&result)) {
        throw CommandFailure(translated("\"%1$@\": %2$@", options.file, *problem));
    }
    const auto& import = std::get<Import>(result);
    for (const std::string& problem : import.problems) say(problem);
    const std::size_t count = import.taskCount();
    if (!options.dryRun) addToStore(program, import, options);
    program.printLine(options.dryRun
                          ? translatedCount("1 task would be imported.", "%d tasks would be imported.", count)
                          : translatedCount("1 task imported.", "%d tasks imported.", count));
}

void addExport(CLI::App& app, Program& program) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App& command = *app.add_subcommand("export", translated("Write tasks as text or HTML"));
    addTaskQueryOptions(command, options->query);
    command.add_option("--title", options->title, translated("A heading"));
    command.add_flag("--tree", options->tree, translated("Show the tree of subtasks"))
        ->excludes(command.get_option("--order"));
    CLI::Option* html = command.add_flag("--html", options->html, translated("An HTML fragment"));
    command.add_flag("--page", options->page, translated("A complete HTML page"))->excludes(html);
    command.add_option("--output", options->output, translated("A file, written whole or not at all"))
        ->type_name("FILE");
    command.callback([&program, options] { runExport(program, *options); });
}

void addImport(CLI::App& app, Program& program) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App& command = *app.add_subcommand(
        "import", translated("Take tasks from plain text, Google Tasks' Takeout JSON or iCalendar to-dos"));
    command.add_option("file", options->file, translated("The file; - is standard input"))->required();
    command.add_option("--list", options->list, translated("The list that takes all tasks"));
    command.add_option("--account", options->account, translated("The account that takes them"));
    command.add_flag("--dry-run", options->dryRun, translated("Only say what would be imported"));
    command.callback([&program, options] { runImport(program, *options); });
}

}  // namespace

void addExportCommands(CLI::App& app, Program& program) {
    addExport(app, program);
    addImport(app, program);
}

}  // namespace corvane
