// `corvane today`: shows the widget once, or follows it.
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/TerminalStyle.h"
#include "apps/corvane/TerminalText.h"
#include "apps/corvane/TodayJson.h"
#include "apps/corvane/TodayLine.h"
#include "apps/corvane/TodayText.h"
#include "apps/corvane/TodayWaybar.h"
#include "apps/corvane/WidgetOptions.h"
#include "apps/host/Follower.h"
#include "apps/host/ProgramStore.h"
#include "apps/host/WidgetHost.h"

namespace corvane {
namespace {

struct TodayOptions {
    WidgetOptions widget;
    std::string format;  ///< empty: none was asked for
    std::string color = "auto";
    std::string links = "auto";
    std::optional<std::size_t> maxWidth;
    bool follow = false;
    bool hideEmpty = false;
};

When whenFromText(std::string_view text) {
    if (text == "always") return When::kAlways;
    return text == "never" ? When::kNever : When::kAuto;
}

// What one refresh gives to print, and what of it has to differ from the last one to be printed again.
struct Output {
    std::string text;
    std::string content;
};

class TodayDisplay {
  public:
    TodayDisplay(Program& program, const TodayOptions& options)
        : program_(program), options_(options), host_(options.widget.hostOptions()) {}

    void showOnce() {
        host_.refresh();
        problem_ = host_.problem();
        print(output().text);
        program_.flush();
        if (problem_) throw CommandFailure(*problem_);
    }

    void follow() {
        Follower follower(host_);
        follower.refresh();
        showChanges();
        while (!program_.readerHasGone() && waitFor(follower)) {
            if (!follower.takeEvents()) continue;
            follower.refresh();
            showChanges();
        }
    }

  private:
    bool isText() const { return options_.format == "text"; }
    bool isData() const { return options_.format == "json" || options_.format == "waybar"; }

    Output output() {
        const WidgetSnapshot& widget = host_.snapshot();
        if (options_.format == "json") return jsonOutput(widget);
        const std::string text = isText() ? drawnWidget(widget) : barLine(widget);
        return {text, text + problem_.value_or("")};
    }

    Output jsonOutput(const WidgetSnapshot& widget) const {
        TodayFacts facts{host_.controller().dueDates().now, host_.validUntil(), host_.overdueCount(),
                         problem_};
        Output result;
        result.text = todayJson(widget, facts);
        facts.now = Date();
        result.content = todayJson(widget, facts);
        return result;
    }

    // A store that was not made yet holds no task; one that cannot be read may hold many.
    std::string barLine(const WidgetSnapshot& widget) const {
        const BarOptions bar{options_.maxWidth, options_.hideEmpty};
        const bool isWaybar = options_.format == "waybar";
        if (problem_ && !isStoreMissing(GSData::sharedInstance()))
            return (isWaybar ? waybarOfProblem : lineOfProblem)(*problem_);
        return (isWaybar ? todayWaybar : todayLine)(widget, host_.overdueCount(), bar);
    }

    std::string drawnWidget(const WidgetSnapshot& widget) const {
        if (options_.hideEmpty && widget.dueCount == 0) return {};
        TerminalStyle style =
            TerminalStyle::ofOutput(whenFromText(options_.color), whenFromText(options_.links));
        if (options_.maxWidth)
            style.width = std::min(style.width.value_or(*options_.maxWidth), *options_.maxWidth);
        const TodayViewController& controller = host_.controller();
        return todayText(widget, {controller.addTaskUrl(), controller.todayUrl()}, style);
    }

    void print(const std::string& text) {
        if (isData()) return program_.printData(text);
        if (isText()) return program_.print(text);
        program_.printLine(text);
    }

    // The problem comes last: on a terminal the drawing would take it away.
    void showChanges() {
        const auto before = std::exchange(problem_, host_.problem());
        printWhenDifferent();
        if (problem_ && problem_ != before) say(*problem_);
    }

    // On a terminal the drawing stays where it is, like a window.
    void printWhenDifferent() {
        constexpr std::string_view kClearScreen = "\033[H\033[2J";
        Output latest = output();
        if (printedContent_ == latest.content) return;
        if (isText() && isOutputTerminal()) program_.print(kClearScreen);
        print(latest.text);
        program_.flush();
        printedContent_ = std::move(latest.content);
    }

    // False when nobody reads the output any more, which an idle writer would not notice.
    static bool waitFor(const Follower& follower) {
        pollfd descriptors[] = {
            {follower.fileDescriptor(), POLLIN, 0},
            {STDOUT_FILENO,             0,      0}
        };
        constexpr int kForEver = -1;
        poll(descriptors, std::size(descriptors), kForEver);
        return (descriptors[1].revents & (POLLERR | POLLHUP)) == 0;
    }

    Program& program_;
    const TodayOptions& options_;
    WidgetHost host_;
    std::optional<std::string> problem_;  ///< of the last refresh
    std::optional<std::string> printedContent_;
};

void runToday(Program& program, TodayOptions& options) {
    if (program.options.json && !options.format.empty() && options.format != "json") {
        throw CommandFailure(translated("--json and --format %@ exclude each other", options.format), kUsage);
    }
    if (options.format.empty()) options.format = program.options.json ? "json" : "text";
    TodayDisplay display(program, options);
    if (options.follow) return display.follow();
    display.showOnce();
}

void addOptions(CLI::App& command, TodayOptions& options) {
    addWidgetOptions(command, options.widget);
    addChoice(command, "--format", options.format, {"text", "json", "waybar", "line"},
              translated("How to print it (text)"));
    command.add_flag("--follow", options.follow, translated("Stay, and print again whenever it changes"));
    addChoice(command, "--color", options.color, {"auto", "always", "never"},
              translated("Colours in the text (auto)"));
    addChoice(command, "--links", options.links, {"auto", "always", "never"},
              translated("Hyperlinks in the text (auto)"));
    command
        .add_option("--max-width", options.maxWidth,
                    translated("Cells of a line of text, or of a title in a bar"))
        ->check(CLI::Range(1, 100'000))
        ->option_text("CELLS");
    command.add_flag("--hide-empty", options.hideEmpty, translated("Print nothing when nothing is due"));
}

}  // namespace

void addTodayCommand(CLI::App& app, Program& program) {
    const auto options = std::make_shared<TodayOptions>();
    CLI::App& command = *app.add_subcommand("today", translated("Show what is due today"));
    addOptions(command, *options);
    command.callback([&program, options] { runToday(program, *options); });
}

}  // namespace corvane
