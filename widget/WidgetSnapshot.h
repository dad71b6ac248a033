// What the widget shows after a refresh, as plain values: for every output that is not a window.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/Date.h"
#include "platform/views/Color.h"
#include "platform/views/ExtensionContext.h"

namespace corvane {

class GTask;
class TodayViewController;

/// A row as its cell shows it; none for what is hidden.
struct WidgetRow {
    std::string taskid;  ///< the task's object URI
    std::u16string url;  ///< where a tap leads
    std::optional<std::u16string> title;
    std::optional<std::u16string> notes;  ///< on one line
    std::optional<std::u16string> time;
    std::optional<std::string> bullet;  ///< image names
    std::optional<std::string> priority;
    std::optional<Color> color;
    bool alert = false;
    bool repeat = false;

    bool operator==(const WidgetRow&) const = default;
};

/// Two of them are equal when there is no difference to see.
struct WidgetSnapshot {
    DisplayMode displayMode = DisplayMode::kCompact;
    std::size_t dueCount = 0;  ///< with the tasks that have no row
    std::int64_t maxTasksInWidget = 0;
    std::vector<WidgetRow> rows;
    std::optional<std::u16string> footer;
    std::optional<std::u16string> showAllTitle;  ///< none: the button is hidden
    bool noTasksHidden = true;
    std::u16string wellDone;
    std::u16string noMoreTasks;
    Size preferredContentSize;
    DisplayMode largestAvailableDisplayMode = DisplayMode::kCompact;

    bool operator==(const WidgetSnapshot&) const = default;
};

/// A task's row as its cell shows it, as of now; its list of any kind, done or not. Without a URL.
WidgetRow widgetRow(const GTask& task);

/// Reads the controller, which has been refreshed. Loads the shown rows, in one statement, and no others.
WidgetSnapshot widgetSnapshot(const TodayViewController& controller);

/// The first moment at which the same store would show something else or another number of late tasks: the
/// end of the day that the refresh went by, or the next due time. One query.
Date validUntil(const TodayViewController& controller);

/// How many of the due tasks were late at the refresh. One query.
std::size_t overdueCount(const TodayViewController& controller);

}  // namespace corvane
