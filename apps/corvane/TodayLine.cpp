#include "apps/corvane/TodayLine.h"

#include <string_view>
#include <utility>

#include "apps/corvane/TerminalText.h"
#include "apps/host/Sentence.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

// A blank without width between the two signs: nobody sees it, and the bar reads no command.
std::string withoutBarCommands(std::string line) {
    constexpr std::string_view kCommand = "%{";
    constexpr std::string_view kZeroWidthSpace = "\u200B";
    for (std::size_t at = 0; (at = line.find(kCommand, at)) != std::string::npos; ++at) {
        line.insert(at + 1, kZeroWidthSpace);
    }
    return line;
}

std::u16string shownText(std::u16string_view text, std::optional<std::size_t> width) {
    std::u16string harmless = terminalText(text);
    return width ? cutToWidth(harmless, *width) : harmless;
}

}  // namespace

WidgetSnapshot widgetForBar(WidgetSnapshot widget, std::optional<std::size_t> titleWidth) {
    for (WidgetRow& row : widget.rows) {
        if (row.title) row.title = shownText(*row.title, titleWidth);
    }
    return widget;
}

std::string todayLine(const WidgetSnapshot& widget, std::size_t overdueCount, const BarOptions& options) {
    if (options.hideEmpty && widget.dueCount == 0) return {};
    const WidgetSnapshot shown = widgetForBar(widget, options.titleWidth);
    return withoutBarCommands(utf8FromText(widgetSentence(shown, overdueCount)));
}

std::string lineOfProblem(std::string_view problem) {
    return withoutBarCommands(utf8FromText(terminalText(textFromUtf8(problem))));
}

}  // namespace corvane
