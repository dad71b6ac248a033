// Snapshots of widgets, for the tests of what shows them.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "widget/WidgetSnapshot.h"

namespace corvane {

/// An open task that is due today, in a red list.
inline WidgetRow rowOf(std::u16string_view title, const char* priority = nullptr) {
    WidgetRow row;
    row.taskid = "x-coredata://A/GTask/p1";
    row.url = u"velmor-plorixmax://localhost/today?taskid=p1";
    row.title = title;
    row.time = u"Today";
    row.bullet = "Task-VUnchecked";
    if (priority) row.priority = priority;
    row.color = Color::rgb(1, 0, 0);
    return row;
}

/// An expanded widget that shows all that is due.
inline WidgetSnapshot widgetOf(std::vector<WidgetRow> rows) {
    WidgetSnapshot widget;
    widget.displayMode = DisplayMode::kExpanded;
    widget.largestAvailableDisplayMode = DisplayMode::kExpanded;
    widget.dueCount = rows.size();
    widget.noTasksHidden = !rows.empty();
    widget.rows = std::move(rows);
    widget.wellDone = u"Well done!";
    widget.noMoreTasks = u"No more tasks for today.";
    return widget;
}

}  // namespace corvane
