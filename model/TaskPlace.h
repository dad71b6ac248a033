// Places in a list's tree of tasks: a parent or none, and the sibling before the place or none.
#pragma once

#include <cstdint>
#include <vector>

#include "model/GList.h"
#include "model/GTask.h"

namespace corvane {

struct TaskPlace {
    GTask* parent = nullptr;
    GTask* previous = nullptr;
};

bool isLiveIn(const GList& list, const GTask* task);

/// The place of a new task. A parent of another list and a removed one are dropped; a previous task that is
/// no child of the parent gives way to the parent's last child. Without a parent there is no such child: the
/// place is then the top of the list, and stays so for every caller that relies on it.
///
/// @param copied  the task that is being copied: it is neither parent nor previous task; null: none
TaskPlace placeOfNewTask(const GList& list, GTask* parentTask, GTask* previousTask, const GTask* copied);

/// The position that a new task takes there.
std::int64_t positionOfNewTask(const TaskPlace& place);

/// What another reading of the list's order gives, after positions were changed or tasks added at the end.
void readAgain(std::vector<GTask*>& order, const GList& list);

/// Makes a new task at a position, moving up what stands from there on in `order`. The task is no part of
/// `order`, and the list keeps its cache.
GTask& insertNewTask(GList& list, const std::vector<GTask*>& order, std::int64_t position, GTask* parent);

/// What follows for a removed task: its children go to its parent, and it leaves the store unless a server
/// has to hear of it.
void leaveTree(GTask& task, bool purge);

}  // namespace corvane
