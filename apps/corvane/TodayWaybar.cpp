#include "apps/corvane/TodayWaybar.h"

#include <cstdint>

#include <nlohmann/json.hpp>

#include "apps/corvane/TerminalText.h"
#include "apps/host/Sentence.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

constexpr std::size_t kTitleWidth = 40;

const char* classOf(const WidgetSnapshot& widget, std::size_t overdueCount) {
    if (widget.dueCount == 0) return "empty";
    return overdueCount > 0 ? "overdue" : "due";
}

// The count comes first, so that it stays in sight whatever the bar cuts off.
std::string barText(const WidgetSnapshot& widget) {
    std::string text = std::to_string(widget.dueCount);
    if (!widget.rows.empty() && widget.rows.front().title) {
        text += " " + pangoEscaped(*widget.rows.front().title);
    }
    return text;
}

std::string tooltip(const WidgetSnapshot& widget, std::size_t overdueCount) {
    if (widget.dueCount == 0) {
        return pangoEscaped(widget.wellDone) + "\n" + pangoEscaped(widget.noMoreTasks);
    }
    std::string text = "<b>" + pangoEscaped(dueCountText(widget.dueCount, overdueCount)) + "</b>";
    for (const WidgetRow& row : widget.rows) text += "\n" + pangoEscaped(rowInWords(row));
    if (widget.showAllTitle) text += "\n" + pangoEscaped(*widget.showAllTitle);
    return text;
}

}  // namespace

std::string todayWaybar(const WidgetSnapshot& widget, std::size_t overdueCount, const BarOptions& options) {
    const WidgetSnapshot shown = widgetForBar(widget, options.titleWidth.value_or(kTitleWidth));
    const bool isHidden = options.hideEmpty && widget.dueCount == 0;
    const char* state = classOf(widget, overdueCount);
    const nlohmann::ordered_json object = {
        {"text",    isHidden ? std::string() : barText(shown)},
        {"alt",     state                                    },
        {"tooltip", tooltip(shown,                             overdueCount)},
        {"class",         state                                           },
    };
    return object.dump();
}

std::string waybarOfProblem(std::string_view problem) {
    const std::string tooltip = pangoEscaped(terminalText(textFromUtf8(problem)));
    const nlohmann::ordered_json object = {
        {"text",    "!"    },
        {"alt",     "error"},
        {"tooltip", tooltip},
        {"class",   "error"},
    };
    return object.dump();
}

std::string pangoEscaped(std::u16string_view text) {
    std::string result;
    for (const char c : utf8FromText(text)) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '\'':
                result += "&#39;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result.push_back(c);
        }
    }
    return result;
}

}  // namespace corvane
