// The widget as a custom module of the bar Waybar ("return-type": "json") reads it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "apps/corvane/TodayLine.h"

namespace corvane {

/// One line of JSON: "text" with the count and the first title, "tooltip" of several lines, "class" and "alt"
/// ("overdue", "due" or "empty"). Texts are Pango markup: the bar's own escaping stays off.
std::string todayWaybar(const WidgetSnapshot& widget, std::size_t overdueCount, const BarOptions& options);

/// The same form for a store that cannot be read: "text" is "!", "tooltip" the problem, "class" and "alt" are
/// "error".
std::string waybarOfProblem(std::string_view problem);

/// A text inside Pango markup: "&amp;", "&lt;", "&gt;", "&#39;" and "&quot;" in place of the five signs.
std::string pangoEscaped(std::u16string_view text);

}  // namespace corvane
