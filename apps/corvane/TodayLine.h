// The widget in one line for bars.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "widget/WidgetSnapshot.h"

namespace corvane {

struct BarOptions {
    std::optional<std::size_t> titleWidth = std::nullopt;  ///< cells of a title; none: the format's own
    bool hideEmpty = false;                                ///< nothing to see when nothing is due
};

/// The widget with texts that are harmless on one line, titles cut to so many cells.
WidgetSnapshot widgetForBar(WidgetSnapshot widget, std::optional<std::size_t> titleWidth);

/// One sentence for people, UTF-8. Titles are whole unless the options say otherwise; "%{" in one comes
/// apart, as that begins a command of Polybar.
std::string todayLine(const WidgetSnapshot& widget, std::size_t overdueCount, const BarOptions& options);

/// The problem of a store that cannot be read, as harmless as the widget's line.
std::string lineOfProblem(std::string_view problem);

}  // namespace corvane
