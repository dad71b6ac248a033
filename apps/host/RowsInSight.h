// What of the widget's content its height leaves in sight.
#pragma once

#include <algorithm>
#include <cstddef>

#include "widget/WidgetLayout.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {

/// A compact widget keeps its height, and what lies below is out of sight until it is expanded: the lower
/// rows, footer and buttons.
inline bool isContentCutOff(const WidgetSnapshot& widget) {
    return widget.displayMode == DisplayMode::kCompact &&
           widget.largestAvailableDisplayMode == DisplayMode::kExpanded;
}

/// How many rows can be seen whole.
inline std::size_t rowsInSight(const WidgetSnapshot& widget) {
    if (!isContentCutOff(widget)) return widget.rows.size();
    const double rows = (widget.preferredContentSize.height - kTopMargin) / kRowHeight;
    return std::min(widget.rows.size(), static_cast<std::size_t>(std::max(rows, 0.0)));
}

}  // namespace corvane
