// The trees that a selection of tasks makes by itself.
#pragma once

#include <span>
#include <vector>

#include "model/GList.h"
#include "model/GTask.h"
#include "queries/TaskListExport.h"

namespace corvane {

/// Tasks in tree order: list by list, each followed by its selected subtasks, siblings by position. A task
/// whose parent is not among them is a root, behind the tree that it would else stand in.
///
/// @param tasks  each once, in any order
/// @param lists  their order; tasks of other lists come last
std::vector<ExportedTask> selectedTrees(std::span<GTask* const> tasks, std::span<GList* const> lists);

}  // namespace corvane
