// The widget in one sentence, in the user's language: for bars, tooltips, screen readers and messages.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "widget/WidgetSnapshot.h"

namespace corvane {

/// "3 tasks due, 1 overdue. First: Milk, today at 14:00, high priority." Without rows it tells the counts,
/// and without due tasks that there are none. Titles stand in direction isolates.
///
/// @param overdueCount  0: it is not told
std::u16string widgetSentence(const WidgetSnapshot& widget, std::size_t overdueCount);

/// "3 tasks due, 1 overdue", without a stop.
std::u16string dueCountText(std::size_t dueCount, std::size_t overdueCount);

/// A row in words: "Milk, today at 14:00, high priority", its title in direction isolates.
std::u16string rowInWords(const WidgetRow& row);

/// "low priority", "medium priority" or "high priority", by the image that marks it; none without a mark.
std::optional<std::u16string> priorityInWords(const std::optional<std::string>& mark);

}  // namespace corvane
