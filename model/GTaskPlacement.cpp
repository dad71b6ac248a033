#include <algorithm>
#include <iterator>

#include "model/DisplayOrder.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/TaskPlace.h"
#include "model/TaskTree.h"

namespace corvane {
namespace {

/// The place that a move within the list asks for.
TaskPlace placeOfMovedTask(const GTask& task, const GList& list, GTask* parentTask, GTask* previousTask) {
    GTask* previous = previousTask;
    if (previous && (previous == &task || !isLiveIn(list, previous))) previous = task.previousTask();
    if (previous) return {previous->parentTask(), previous};
    if (!parentTask) return {};
    const bool isUsable = parentTask != &task && isLiveIn(list, parentTask);
    return {isUsable ? parentTask : task.parentTask(), nullptr};
}

/// The position of a place in the numbering before the move.
std::int64_t positionOfPlace(const TaskPlace& place, const std::vector<GTask*>& order) {
    const GTask* next = place.previous ? nextSibling(order, *place.previous) : nullptr;
    return next ? next->displayOrder() : positionOfNewTask(place);
}

/// Moves a task and its subtree; the order is the one before the move.
void moveWithinOrder(const std::vector<GTask*>& order, GTask& task, const TaskPlace& place) {
    if (task.parentTask() == place.parent && previousSibling(order, task, kCompletedToo) == place.previous) {
        return;
    }
    const std::int32_t old = task.displayOrder();
    const auto count = static_cast<std::int32_t>(task.countTotalSubTasks());
    auto position = static_cast<std::int32_t>(positionOfPlace(place, order));
    // Taking the task out of its old place lowers what stands behind it. The second comparison sees the
    // lowered position: a task that goes right behind itself stays where it is.
    if (position > old) --position;
    if (position > old) position -= count;
    if (position != old) {
        std::int32_t nextDisplayOrder = position;
        task.fixDisplayOrder(nextDisplayOrder, nullptr);
        renumber(order, position, old, count + 1);
        renumber(order, std::int64_t{old} + count + 1, std::int64_t{position} + count + 1, -(count + 1));
    }
    task.setParentTask(place.parent);
}

// Each child in turn becomes the first one of the parent, the last child first. In a sound order that comes
// down to the run of them all going in before the parent's other children.
bool liftRun(std::vector<GTask*>& order, const std::vector<GTask*>& children, GTask& task,
             const GList& list) {
    GTask* parent = task.parentTask();
    if (list.useCachedOrderedAllTasks() || (parent && !isLiveIn(list, parent))) return false;
    const std::vector<GTask*> tree = tasksOf(liveTree(task));
    const std::int64_t old = task.displayOrder();
    const std::int64_t first = parent ? parent->displayOrder() + 1 : 0;
    if (first > old || !isSoundRun(order, old, tree)) return false;
    std::rotate(order.begin() + first, order.begin() + old + 1, order.begin() + old + std::ssize(tree));
    for (GTask* child : children) child->setParentTask(parent);
    constexpr std::int64_t kToItsIndex = 0;
    renumber(order, first, old + std::ssize(tree), kToItsIndex);
    return true;
}

/// Moves the children up one level, to before the task's own siblings.
void liftSubTasks(std::vector<GTask*>& order, GTask& task, GList& list) {
    const std::vector<GTask*> children = liveSubTasksInOrder(task);
    if (liftRun(order, children, task, list)) return list.resetOrderedAllTasks();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        moveWithinOrder(order, **child, placeOfMovedTask(**child, list, task.parentTask(), nullptr));
        readAgain(order, list);
    }
}

}  // namespace

GTask& GTask::insertNewTaskToList(GList& list, GTask* parentTask, GTask* previousTask) {
    const TaskPlace place = placeOfNewTask(list, parentTask, previousTask, nullptr);
    GTask& task = insertNewTask(list, list.orderedAllTasks(), positionOfNewTask(place), place.parent);
    list.resetOrderedAllTasks();
    return task;
}

GTask& GTask::moveToList(GList& list, GTask* parentTask, GTask* previousTask) {
    if (&list != this->list()) {
        GTask& copy = cloneToList(list, parentTask, previousTask);
        deleteTaskAndSubTasks(kKeepTombstone);
        return copy;
    }
    TaskPlace place = placeOfMovedTask(*this, list, parentTask, previousTask);
    std::vector<GTask*> order = list.orderedAllTasks();
    if (place.parent && place.parent->hasParent(this)) {
        liftSubTasks(order, *this, list);
        // Only below a removed task can the place still lie in the subtree: no circle of parents comes of it.
        if (place.parent->hasParent(this)) place = {};
    }
    moveWithinOrder(order, *this, place);
    return *this;
}

}  // namespace corvane
