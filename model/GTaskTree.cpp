#include <algorithm>

#include "model/ContextOf.h"
#include "model/DisplayOrder.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/TaskTree.h"
#include "queries/Fetches.h"

namespace corvane {
namespace {

/// Calls `visit` on the parent, its parent and so on until it answers false. In a circle of parents it ends
/// after every one of them was visited at least once.
/// @return whether the root was reached
template <class Visitor>
bool visitAncestors(const GTask& task, Visitor visit) {
    const GTask* mark = &task;
    std::uint64_t steps = 0;
    std::uint64_t stepsToNextMark = 1;
    for (const GTask* parent = task.parentTask(); parent; parent = parent->parentTask()) {
        if (!visit(*parent) || parent == mark) return false;
        if (++steps < stepsToNextMark) continue;
        mark = parent;
        steps = 0;
        stepsToNextMark *= 2;
    }
    return true;
}

std::vector<GTask*> orderOf(const GList* list) {
    return list ? list->orderedAllTasks() : std::vector<GTask*>();
}

struct CollapsingTask {
    GTask* task;
    std::vector<GTask*> children;
    std::size_t next = 0;
};

CollapsingTask collapsingTask(GTask& task, const GTask& root) {
    std::vector<GTask*> children = task.subTasks().toVector();
    std::erase(children, &root);
    return {&task, std::move(children)};
}

}  // namespace

std::vector<GTask*> GTask::orderedSubTasks(bool uncompletedOnly) const {
    return fetchObjects<GTask>(&contextOf(*this),
                               uncompletedOnly ? u"removed == NO AND parentTask == %@ AND completed == NO"
                                               : u"removed == NO AND parentTask == %@",
                               {argument(this)}, kByPosition);
}

bool GTask::hasParent(const GTask* task) const {
    if (!task) return true;
    bool isFound = false;
    visitAncestors(*this, [&](const GTask& ancestor) {
        isFound = &ancestor == task;
        return !isFound;
    });
    return isFound;
}

bool GTask::hasSubtasks() const {
    const RelatedObjects<GTask> children = subTasks();
    return std::any_of(children.begin(), children.end(),
                       [](const GTask* child) { return !child->removed(); });
}

std::uint32_t GTask::countTotalSubTasks() const {
    std::uint32_t count = 0;
    std::vector<const GTask*> waiting = {this};
    while (!waiting.empty()) {
        const GTask* task = waiting.back();
        waiting.pop_back();
        for (const GTask* child : task->subTasks()) {
            if (child->removed() || child == this) continue;
            ++count;
            waiting.push_back(child);
        }
    }
    return count;
}

// Tasks whose parents run in a circle have no root above them and count as roots.
std::uint32_t GTask::depth() const {
    std::uint32_t levels = 0;
    const bool reachesRoot = visitAncestors(*this, [&](const GTask&) {
        ++levels;
        return true;
    });
    return reachesRoot ? levels : 0;
}

GTask* GTask::previousTask() const { return previousSibling(orderOf(list()), *this, kCompletedToo); }

GTask* GTask::previousUncompletedTask() const {
    return previousSibling(orderOf(list()), *this, kUncompletedOnly);
}

GTask* GTask::nextTask() const { return nextSibling(orderOf(list()), *this); }

void GTask::recursiveSetCollapseTo(bool collapsed) {
    constexpr std::string_view kParentTask = "parentTask";
    std::vector<CollapsingTask> path = {collapsingTask(*this, *this)};
    while (!path.empty()) {
        CollapsingTask& current = path.back();
        if (current.next < current.children.size()) {
            GTask& child = *current.children[current.next++];
            path.push_back(collapsingTask(child, *this));
            continue;
        }
        current.task->setCollapsed(collapsed);
        for (GTask* child : current.children) child->didChangeValueForKey(kParentTask);
        GTask* done = current.task;
        path.pop_back();
        if (!path.empty()) done->willChangeValueForKey(kParentTask);
    }
}

bool GTask::fixDisplayOrder(std::int32_t& nextDisplayOrder, const ParentTasks* parentTasks) {
    const std::vector<TaskInTree> tree = liveTree(*this, parentTasks);
    std::vector<bool> isChanged(tree.size());
    for (std::size_t i = 0; i < tree.size(); ++i) {
        isChanged[i] = tree[i].task->displayOrder() != nextDisplayOrder;
        if (isChanged[i]) tree[i].task->setDisplayOrder(displayOrderOfPosition(nextDisplayOrder));
        nextDisplayOrder = static_cast<std::int32_t>(static_cast<std::uint32_t>(nextDisplayOrder) + 1);
    }
    for (std::size_t i = tree.size(); i-- > 0;) {
        if (!isChanged[i]) continue;
        isChanged[tree[i].parent] = true;
        if (GList* owner = tree[i].task->list()) owner->resetOrderedAllTasks();
    }
    return isChanged.front();
}

}  // namespace corvane
