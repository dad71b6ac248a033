#include "model/TaskPlace.h"

#include "model/ContextOf.h"
#include "model/DisplayOrder.h"
#include "model/TaskTree.h"
#include "platform/foundation/Environment.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

GTask* lastSubTask(const GTask& parent) {
    const std::vector<GTask*> children = liveSubTasksInOrder(parent);
    return children.empty() ? nullptr : children.back();
}

}  // namespace

bool isLiveIn(const GList& list, const GTask* task) {
    return task && task->list() == &list && !task->removed();
}

TaskPlace placeOfNewTask(const GList& list, GTask* parentTask, GTask* previousTask, const GTask* copied) {
    const auto isUsable = [&](const GTask* task) { return isLiveIn(list, task) && task != copied; };
    TaskPlace place = {isUsable(parentTask) ? parentTask : nullptr, previousTask};
    if (place.previous && place.previous->parentTask() != place.parent) {
        place.previous = place.parent ? lastSubTask(*place.parent) : nullptr;
    }
    if (!isUsable(place.previous)) place.previous = nullptr;
    return place;
}

std::int64_t positionOfNewTask(const TaskPlace& place) {
    if (place.previous) {
        return std::int64_t{place.previous->displayOrder()} + place.previous->countTotalSubTasks() + 1;
    }
    return place.parent ? place.parent->displayOrder() + 1 : 0;
}

// A reading would have to judge every task that was changed.
void readAgain(std::vector<GTask*>& order, const GList& list) {
    if (list.useCachedOrderedAllTasks()) {
        order = list.orderedAllTasks();
    } else {
        sortByDisplayOrder(order);
    }
}

GTask& insertNewTask(GList& list, const std::vector<GTask*>& order, std::int64_t position, GTask* parent) {
    constexpr std::int64_t kOneFurther = 1;
    renumber(order, position, static_cast<std::int64_t>(order.size()), kOneFurther);
    GTask& task = contextOf(list).insert<GTask>();
    task.setCreatedTimestamp(now());
    task.setDisplayOrder(displayOrderOfPosition(position));
    task.setList(&list);
    task.setParentTask(parent);
    return task;
}

}  // namespace corvane
