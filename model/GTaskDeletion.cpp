#include <algorithm>
#include <iterator>

#include "model/DisplayOrder.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/TaskPlace.h"
#include "model/TaskTree.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

constexpr std::int64_t kToItsIndex = 0;

void closeGap(const std::vector<GTask*>& order, std::int64_t position) {
    renumber(order, position, std::ssize(order), kToItsIndex);
}

/// Marks a task removed. @return the list's order afterwards, which a cache of the list may know only as it
/// was before
std::vector<GTask*> orderAfterRemoving(GTask& task) {
    const GList* list = task.list();
    std::vector<GTask*> order;
    // Read before there is a change that the reading would have to judge.
    const bool readsBefore = list && !list->useCachedOrderedAllTasks();
    if (readsBefore) order = list->orderedAllTasks();
    task.setRemoved(true);
    if (list && !readsBefore) return list->orderedAllTasks();
    std::erase(order, &task);
    return order;
}

// In a sound order each of them has moved to `position` by the time of its own deletion, and what stands
// behind them all moves once.
void deleteRun(std::vector<GTask*>& order, std::int16_t position, std::span<GTask* const> tasks, bool purge) {
    for (GTask* task : tasks) {
        task->setRemoved(true);
        task->setDisplayOrder(position);
        leaveTree(*task, purge);
    }
    const auto first = order.begin() + position;
    order.erase(first, first + std::ssize(tasks));
    closeGap(order, position);
}

void deleteOneByOne(std::vector<GTask*>& order, const GList* list, std::span<GTask* const> tasks,
                    bool purge) {
    for (GTask* task : tasks) {
        if (task->list() != list) {
            task->deleteTask(purge);
            continue;
        }
        task->setRemoved(true);
        std::erase(order, task);
        closeGap(order, task->displayOrder());
        leaveTree(*task, purge);
        sortByDisplayOrder(order);
    }
}

/// Deletes one task. @return the list's order afterwards
std::vector<GTask*> deleteAlone(GTask& task, bool purge) {
    std::vector<GTask*> order = orderAfterRemoving(task);
    closeGap(order, task.displayOrder());
    if (GList* list = task.list()) list->resetOrderedAllTasks();
    leaveTree(task, purge);
    return order;
}

}  // namespace

void leaveTree(GTask& task, bool purge) {
    GTask* parent = task.parentTask();
    for (GTask* child : task.subTasks().toVector()) {
        child->setParentTask(parent);
        if (!purge) child->updateLastModified();
    }
    if (task.id() && !purge) return;
    task.setList(nullptr);
    // A task that has left its store before has no context any more.
    if (ManagedObjectContext* context = task.managedObjectContext()) context->deleteObject(task);
}

void GTask::deleteTask(bool purge) { deleteAlone(*this, purge); }

void GTask::deleteTaskAndSubTasks(bool purge) {
    const std::vector<GTask*> tree = tasksOf(liveTree(*this));
    const std::span<GTask* const> subTasks = std::span(tree).subspan(1);
    GList* owner = list();
    const std::int16_t position = displayOrder();
    std::vector<GTask*> order = deleteAlone(*this, purge);
    if (subTasks.empty()) return;
    if (owner) readAgain(order, *owner);
    if (isSoundRun(order, position, subTasks)) {
        deleteRun(order, position, subTasks, purge);
    } else {
        deleteOneByOne(order, owner, subTasks, purge);
    }
    if (owner) owner->resetOrderedAllTasks();
}

}  // namespace corvane
