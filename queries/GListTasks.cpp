// The tasks of a list.
#include "model/GList.h"
#include "model/GTask.h"
#include "model/TaskPlace.h"
#include "platform/store/ManagedObjectContext.h"
#include "queries/Fetches.h"

namespace corvane {
namespace {

std::vector<GTask*> fetchTasks(const GList& list, std::u16string_view format,
                               const std::vector<SortDescriptor>& order = kByPosition) {
    return fetchObjects<GTask>(list.managedObjectContext(), format, {argument(&list)}, order,
                               kReadWhenNeeded);
}

}  // namespace

std::vector<GTask*> GList::orderedRootTasks() const {
    return fetchTasks(*this, u"removed == NO AND parentTask == nil AND list == %@");
}

ParentTasks GList::parentTasks() const {
    ParentTasks parents;
    for (const GTask* task :
         fetchTasks(*this, u"removed == NO AND parentTask != nil AND list == %@", kUnsorted)) {
        if (GTask* parent = task->parentTask()) parents.emplace(parent->objectID(), parent);
    }
    return parents;
}

std::vector<GTask*> GList::orderedAllTasks() const {
    if (!useCachedOrderedAllTasks_ || !orderedAllTasks_) {
        orderedAllTasks_ = fetchTasks(*this, u"removed == NO AND list == %@");
    }
    return *orderedAllTasks_;
}

void GList::setUseCachedOrderedAllTasks(bool value) { useCachedOrderedAllTasks_ = value; }

std::vector<GTask*> GList::completedTasks() const {
    return fetchTasks(*this, u"removed == NO AND completed == YES AND list == %@");
}

std::vector<GTask*> GList::removedTasks() const {
    return fetchTasks(*this, u"removed == YES AND list == %@");
}

GTask* GList::findTaskId(std::optional<std::u16string_view> taskId) const {
    if (!taskId || taskId->empty()) return nullptr;
    return firstOf(fetchObjects<GTask>(managedObjectContext(), u"id == %@ AND list == %@",
                                       {Value(std::u16string(*taskId)), argument(this)}, kUnsorted));
}

void GList::deleteCompletedTasks() {
    for (GTask* task : completedTasks()) {
        task->setRemoved(true);
        leaveTree(*task, kAwaitSynchronisation);
    }
    std::int32_t position = 0;
    for (GTask* task : orderedAllTasks()) task->setDisplayOrder(static_cast<std::int16_t>(position++));
}

}  // namespace corvane
