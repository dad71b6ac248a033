#include "apps/corvane-today/DesktopOptions.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include <CLI/CLI.hpp>

#include "apps/host/ParserTexts.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

constexpr int kUsage = 2;

struct Words {
    std::string mode;
    std::string autostart;
    std::string png;
    double scale = 1;
    bool isDark = false;
};

// The parser's own range lets "nan" pass.
CLI::Validator numberBetween(double least, double most) {
    const auto check = [least, most](const std::string& text) -> std::string {
        double number = 0;
        if (CLI::detail::lexical_cast(text, number) && number >= least && number <= most) return {};
        std::ostringstream reason;
        reason << "Value " << text << " not in range " << least << " to " << most;
        return reason.str();
    };
    return CLI::Validator(check, {});
}

void addStoreOptions(CLI::App& app, DesktopOptions& options) {
    app.add_option("--container", options.environment.container,
                   localizedUtf8("The folder of the store, else $CORVANE_CONTAINER"))
        ->type_name("DIR");
    app.add_option("--now", options.environment.now,
                   localizedUtf8("Stands in for the clock, like 2024-03-05T12:00:00Z"))
        ->type_name("TIME");
}

void addWindowOptions(CLI::App& app, DesktopOptions& options, Words& words) {
    app.add_option("--mode", words.mode,
                   localizedUtf8("The widget's display mode, else the one it was left in"))
        ->check(CLI::IsMember({"compact", "expanded"}))
        ->option_text("compact|expanded");
    app.add_option("--width", options.width, localizedUtf8("Width of the content, in points (359)"))
        ->check(numberBetween(200.0, 2000.0))
        ->option_text("POINTS");
    app.add_option("--height", options.height,
                   localizedUtf8("Largest height of the expanded content, in points (600)"))
        ->check(numberBetween(120.0, 10'000.0))
        ->option_text("POINTS");
    app.add_flag("--private", options.isPrivate, localizedUtf8("Hide the titles of tasks everywhere"));
    app.add_flag("--no-alerts", options.isSilent, localizedUtf8("Give no alerts of tasks in this run"));
    app.add_flag("--background", options.startsInBackground,
                 localizedUtf8("Start without a window where there is a tray"));
    app.add_option("--open", options.openUrl, localizedUtf8("Show what a hand-over URL names"))
        ->type_name("URL");
}

void addActs(CLI::App& app, Words& words) {
    CLI::Option* autostart = app.add_option("--autostart", words.autostart,
                                            localizedUtf8("Start with the session, or no more, and exit"))
                                 ->check(CLI::IsMember({"on", "off"}))
                                 ->option_text("on|off");
    CLI::Option* png =
        app.add_option("--png", words.png,
                       localizedUtf8("Draw the widget into a PNG file, without a display, and exit"))
            ->type_name("FILE")
            ->excludes(autostart)
            ->excludes(app.get_option("--open"));
    app.add_option("--scale", words.scale, localizedUtf8("Pixels a point in that file (1)"))
        ->check(numberBetween(0.25, 8.0))
        ->option_text("FACTOR")
        ->needs(png);
    app.add_flag("--dark", words.isDark, localizedUtf8("Draw that file in the dark palette"))->needs(png);
}

void take(const Words& words, DesktopOptions& options) {
    if (!words.mode.empty()) {
        options.mode = words.mode == "compact" ? DisplayMode::kCompact : DisplayMode::kExpanded;
    }
    if (!words.autostart.empty()) options.autostart = words.autostart == "on";
    if (!words.png.empty()) options.png = PngRequest{words.png, words.scale, words.isDark};
}

}  // namespace

bool DesktopOptions::standsAlone() const {
    if (!environment.now.empty()) return true;
    const std::filesystem::path used =
        environment.container.empty() ? Environment::defaultContainerDirectory() : environment.container;
    // With a slash at the end, whether it was typed or not.
    const auto canonical = [](const std::filesystem::path& folder) {
        std::error_code error;
        return std::filesystem::weakly_canonical(folder / "", error);
    };
    return canonical(used) != canonical(userDataDirectory() / kAppGroupIdentifier);
}

void say(const std::string& message) {
    std::string line = message;
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    std::fprintf(stderr, "corvane-today: %s\n", line.c_str());
}

CommandLineReading readCommandLine(int argumentCount, const char* const* arguments) {
    useLocaleOfUser();  // descriptions are translated before any option is read
    DesktopOptions options;
    Words words;
    CLI::App app(localizedUtf8("The today widget on the desktop."), "corvane-today");
    translateHelp(app);
    addStoreOptions(app, options);
    addWindowOptions(app, options, words);
    addActs(app, words);
    app.set_version_flag("--version", "corvane-today " CORVANE_VERSION,
                         localizedUtf8("Print the version and exit"));
    app.set_help_flag("-h,--help", localizedUtf8("Print this help and exit"));
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            return {std::nullopt, app.exit(error)};
        }
        say(translatedReason(error));
        return {std::nullopt, kUsage};
    }
    take(words, options);
    if (const auto problem = setUpProgramEnvironment(options.environment)) {
        say(*problem);
        return {std::nullopt, kUsage};
    }
    return {std::move(options), 0};
}

}  // namespace corvane
