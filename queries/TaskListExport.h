// Task lists as text and as HTML, for callers that decide themselves where a task stands in the tree.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

class GTask;

struct ExportedTask {
    GTask* task = nullptr;
    std::size_t depth = 0;  ///< levels below the roots of the text, whose tasks need not be roots of a list
};

/// `GSData::stringOfTasks` with depths of the caller's own.
///
/// @param tasks  parents before their children; a task stands below the nearest one above it of a smaller
/// depth
std::u16string stringOfExportedTasks(std::span<const ExportedTask> tasks,
                                     std::optional<std::u16string_view> withTitle, bool showSubtasking,
                                     bool html);

}  // namespace corvane
