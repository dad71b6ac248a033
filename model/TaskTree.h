// Walks over the tree of tasks, in memory.
//
// A task has one parent, so that a walk downwards meets no task twice but the one it began at, and only where
// parents run in a circle; that one is then left out.
#pragma once

#include <cstddef>
#include <vector>

#include "model/GTask.h"

namespace corvane {

/// The children that `orderedSubTasks` would fetch, completed ones too. A walk over a tree asks here, since
/// it would else run a statement a task.
std::vector<GTask*> liveSubTasksInOrder(const GTask& task);

struct TaskInTree {
    GTask* task = nullptr;
    std::size_t parent = 0;  ///< index of its parent in the same walk; the first task's is 0
};

/// A task and its live descendants in tree order, parents before their children. What stands below a removed
/// task is left out.
///
/// @param parentTasks  only tasks among them are asked for their children; null: every one
std::vector<TaskInTree> liveTree(GTask& task, const ParentTasks* parentTasks = nullptr);

std::vector<GTask*> tasksOf(const std::vector<TaskInTree>& tree);

}  // namespace corvane
