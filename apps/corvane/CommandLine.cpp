#include "apps/corvane/CommandLine.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/ParserTexts.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

void addGlobalOptions(CLI::App& app, Program& program) {
    app.add_option("--container", program.options.environment.container,
                   translated("The folder of the store, else $CORVANE_CONTAINER"))
        ->type_name("DIR");
    app.add_option("--now", program.options.environment.now,
                   translated("Stands in for the clock, like 2024-03-05T12:00:00Z"))
        ->type_name("TIME");
    app.add_flag("--json", program.options.json, translated("Print data as JSON"));
    app.set_version_flag("--version", "corvane " CORVANE_VERSION, translated("Print the version and exit"));
    app.set_help_flag("-h,--help", translated("Print this help and exit"));
}

struct Nouns {
    std::array<std::string_view, 2> names;
    void (*add)(CLI::App& app, Program& program);
};
constexpr Nouns kNouns[] = {
    {{"today"},            addTodayCommand   },
    {{"demo"},             addDemoCommand    },
    {{"task"},             addTaskCommands   },
    {{"list"},             addListCommands   },
    {{"account"},          addAccountCommands},
    {{"store"},            addStoreCommands  },
    {{"tasks", "filters"}, addTasksCommands  },
    {{"export", "import"}, addExportCommands },
    {{"config"},           addConfigCommand  },
    {{"explain"},          addExplainCommand },
    {{"complete"},         addCompleteCommand},
};

// The nouns that the first word names; null where the line begins in another way.
const Nouns* namedNouns(int argumentCount, const char* const* arguments) {
    for (int i = 1; i < argumentCount; ++i) {
        const std::string_view word = arguments[i];
        const bool takesValue = word == "--container" || word == "--now";
        if (takesValue) ++i;
        if (takesValue || word.starts_with('-')) continue;
        const auto nouns = std::ranges::find_if(kNouns, [word](const Nouns& candidate) {
            return !word.empty() && std::ranges::find(candidate.names, word) != candidate.names.end();
        });
        return nouns == std::end(kNouns) ? nullptr : nouns;
    }
    return nullptr;
}

// A parser of all commands takes longer to make than most of them take to run: one that is named is enough.
void addCommands(CLI::App& app, Program& program, const Nouns* named) {
    app.require_subcommand(1);
    app.fallthrough();
    if (named) return named->add(app, program);
    for (const Nouns& nouns : kNouns) nouns.add(app, program);
}

// The command that was being read when the parser gave up.
const CLI::App& innermostCommand(const CLI::App& app) {
    const auto commands = app.get_subcommands();
    return commands.empty() ? app : innermostCommand(*commands.back());
}

std::string nameOf(const CLI::App& command) {
    const CLI::App* parent = command.get_parent();
    return parent ? nameOf(*parent) + " " + command.get_name() : command.get_name();
}

// The parser's own texts say nothing of what was typed in place of a command.
std::string reason(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& command = innermostCommand(app);
    const bool needsCommand = command.get_require_subcommand_min() > 0 && command.get_subcommands().empty();
    if (!needsCommand || error.get_name() != "RequiredError") return translatedReason(error);
    constexpr bool kOfEveryLevel = true;
    const std::vector<std::string> rest = app.remaining(kOfEveryLevel);
    if (rest.empty()) return translated("a command is missing; see %@ --help", nameOf(command));
    return translated("there is no command \"%1$@\"; see %2$@ --help", rest.front(), nameOf(command));
}

// Asking for help or the version ends the parsing as well.
int parseFailure(Program& program, const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
        say(reason(app, error));
        return kUsage;
    }
    std::ostringstream output;
    app.exit(error, output, output);
    program.print(output.str());
    program.flush();
    return kDone;
}

int parsed(Program& program, CLI::App& app, int argumentCount, const char* const* arguments) {
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        return parseFailure(program, app, error);
    }
    Environment::current().mainQueue->drain();
    program.flush();
    return program.exitCode;
}

}  // namespace

void say(std::string_view message) {
    std::string line(message);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    std::fprintf(stderr, "corvane: %s\n", inCharacterSetOfLocale(terminalUtf8(line)).c_str());
}

void addCommandLine(CLI::App& app, Program& program, int argumentCount, const char* const* arguments) {
    translateHelp(app);
    addGlobalOptions(app, program);
    addCommands(app, program, namedNouns(argumentCount, arguments));
}

int runCommandLine(int argumentCount, const char* const* arguments) {
    useLocaleOfUser();  // descriptions are translated before any option is read
    Program program;
    CLI::App app(translated("The today widget and the task store in the terminal."), "corvane");
    addCommandLine(app, program, argumentCount, arguments);
    // Options are in force before the first command runs, wherever they stand.
    app.parse_complete_callback([&program] {
        if (const auto problem = setUpProgramEnvironment(program.options.environment)) {
            throw CommandFailure(*problem, kUsage);
        }
    });
    try {
        return parsed(program, app, argumentCount, arguments);
    } catch (const CommandFailure& failure) {
        std::fflush(stdout);
        say(failure.what());
        return failure.exitCode();
    }
}

}  // namespace corvane
