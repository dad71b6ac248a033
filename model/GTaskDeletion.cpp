#include <algorithm>

#include "model/DisplayOrder.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/TaskTree.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

/// Marks a task removed and closes its gap in the order, which may still hold it.
void takeOutOfOrder(const std::vector<GTask*>& order, GTask& task) {
    constexpr std::int64_t kToItsIndex = 0;
    task.setRemoved(true);
    renumber(order, task.displayOrder(), static_cast<std::int64_t>(order.size()), kToItsIndex);
}

/// What follows for a removed task: its children go to its parent, and it leaves the store unless a server
/// has to hear of it.
void leaveTree(GTask& task, bool purge) {
    GTask* parent = task.parentTask();
    for (GTask* child : task.subTasks().toVector()) {
        child->setParentTask(parent);
        if (!purge) child->updateLastModified();
    }
    if (task.id() && !purge) return;
    ManagedObjectContext* context = task.managedObjectContext();
    task.setList(nullptr);
    context->deleteObject(task);
}

/// Whether the order holds these tasks one behind the other from `position` on.
bool isRun(const std::vector<GTask*>& order, std::size_t position, std::span<const TaskInTree> tasks) {
    if (position > order.size() || order.size() - position < tasks.size()) return false;
    return std::ranges::equal(tasks, std::span(order).subspan(position, tasks.size()), {}, &TaskInTree::task);
}

// In a sound order each of them has moved to `position` by the time of its own deletion, and what stands
// behind them all moves once.
void deleteRun(std::vector<GTask*> order, std::int16_t position, std::span<const TaskInTree> tasks,
               bool purge) {
    constexpr std::int64_t kToItsIndex = 0;
    for (const TaskInTree& entry : tasks) {
        entry.task->setRemoved(true);
        entry.task->setDisplayOrder(position);
        leaveTree(*entry.task, purge);
    }
    const auto first = order.begin() + position;
    order.erase(first, first + static_cast<std::ptrdiff_t>(tasks.size()));
    renumber(order, position, static_cast<std::int64_t>(order.size()), kToItsIndex);
}

void deleteOneByOne(std::vector<GTask*> order, const GList* list, std::span<const TaskInTree> tasks,
                    bool purge) {
    for (const TaskInTree& entry : tasks) {
        if (entry.task->list() != list) {
            entry.task->deleteTask(purge);
            continue;
        }
        std::erase(order, entry.task);
        takeOutOfOrder(order, *entry.task);
        leaveTree(*entry.task, purge);
        sortByDisplayOrder(order);
    }
}

}  // namespace

void GTask::deleteTask(bool purge) {
    setRemoved(true);
    if (GList* owner = list()) {
        takeOutOfOrder(owner->orderedAllTasks(), *this);
        owner->resetOrderedAllTasks();
    }
    leaveTree(*this, purge);
}

void GTask::deleteTaskAndSubTasks(bool purge) {
    const std::vector<TaskInTree> tree = liveTree(*this);
    const std::span<const TaskInTree> subTasks = std::span(tree).subspan(1);
    GList* owner = list();
    const std::int16_t position = displayOrder();
    deleteTask(purge);
    if (subTasks.empty()) return;
    const std::vector<GTask*> order = owner ? owner->orderedAllTasks() : std::vector<GTask*>();
    if (isSound(order) && isRun(order, static_cast<std::size_t>(position), subTasks)) {
        deleteRun(order, position, subTasks, purge);
    } else {
        deleteOneByOne(order, owner, subTasks, purge);
    }
    if (owner) owner->resetOrderedAllTasks();
}

}  // namespace corvane
