// The widget drawn with characters.
#pragma once

#include <string>

#include "apps/corvane/TerminalStyle.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {

/// Where taps beside the rows lead.
struct TodayLinks {
    std::u16string addTask;
    std::u16string today;
};

/// The widget in UTF-8, every line ended by a line feed: two lines a row, then footer and buttons, or the
/// empty widget. No line is wider than the style's width. The button that adds a task shows only as a link.
std::string todayText(const WidgetSnapshot& widget, const TodayLinks& links, const TerminalStyle& style);

}  // namespace corvane
