#include "model/DisplayOrder.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/TaskPlace.h"
#include "model/TaskTree.h"

namespace corvane {
namespace {

void copyFields(const GTask& source, GTask& copy) {
    copy.setPriority(source.priority());
    copy.setProperties(source.properties());
    copy.setAlertEnabled(source.alertEnabled());
    copy.setAlertDate(source.alertDate());
    copy.setAlertRepeat(source.alertRepeat());
    copy.setAlertRepeatData(source.alertRepeatData());
    copy.setAlertRepeatInterval(source.alertRepeatInterval());
    copy.setDueDate(source.dueDate());
    copy.setHasDueDate(source.hasDueDate());
    copy.setHasDueTime(source.hasDueTime());
    copy.setCompleted(source.completed());
    copy.setCompletedDate(source.completedDate());
    copy.setRemoved(source.removed());
    copy.setNotes(source.notes());
    copy.setName(source.name());
    copy.setRegionAlert(source.regionAlert());
    copy.setRegionDescription(source.regionDescription());
    copy.setRegionLat(source.regionLat());
    copy.setRegionLong(source.regionLong());
    copy.setRegionRadius(source.regionRadius());
    copy.setRegionAccuracy(source.regionAccuracy());
    copy.setHidden(source.hidden());
    copy.setCollapsed(source.collapsed());
}

/// Copies of a tree's tasks. Every copy is inserted as a new task, those below the first one behind their
/// siblings; the list is read once for all of them.
class TreeCopy {
  public:
    TreeCopy(GList& list, const std::vector<TaskInTree>& sources)
        : list_(list), sources_(sources), order_(list.orderedAllTasks()) {}

    GTask& insertAt(const TaskPlace& place) {
        GTask& first = insertNext(order_, positionOfNewTask(place), place.parent);
        list_.resetOrderedAllTasks();
        if (sources_.size() > 1) insertSubTasks();
        return first;
    }

  private:
    void insertSubTasks() {
        if (!copies_.front()->removed()) order_.push_back(copies_.front());
        readAgain(order_, list_);
        if (formRun()) {
            insertRun();
        } else {
            insertOneByOne();
        }
        list_.resetOrderedAllTasks();
    }

    // In a sound order each copy lands right behind the one before it, so that what stands behind them all
    // moves once. The subtasks of a removed task do not stand below its copy.
    bool formRun() const {
        return isSound(order_) && !copies_.front()->removed() &&
               order_.size() + sources_.size() - 1 <= kMaximumSoundOrder;
    }

    void insertRun() {
        const std::int64_t first = copies_.front()->displayOrder() + 1;
        const auto count = static_cast<std::int64_t>(sources_.size()) - 1;
        renumber(order_, first, static_cast<std::int64_t>(order_.size()), count);
        const std::vector<GTask*> nothingToMove;
        for (std::int64_t i = 0; i < count; ++i) insertNext(nothingToMove, first + i, nextParent());
    }

    void insertOneByOne() {
        while (copies_.size() < sources_.size()) {
            // The source is no child of the copied parent: the last copied child stands for it.
            GTask* source = sources_[copies_.size()].task;
            const TaskPlace place = placeOfNewTask(list_, nextParent(), source, nullptr);
            order_.push_back(&insertNext(order_, positionOfNewTask(place), place.parent));
            sortByDisplayOrder(order_);
        }
    }

    GTask* nextParent() const { return copies_[sources_[copies_.size()].parent]; }

    GTask& insertNext(const std::vector<GTask*>& order, std::int64_t position, GTask* parent) {
        GTask& copy = insertNewTask(list_, order, position, parent);
        copyFields(*sources_[copies_.size()].task, copy);
        copies_.push_back(&copy);
        return copy;
    }

    GList& list_;
    const std::vector<TaskInTree>& sources_;
    std::vector<GTask*> copies_;
    std::vector<GTask*> order_;
};

}  // namespace

GTask& GTask::cloneToList(GList& list, GTask* parentTask, GTask* previousTask) {
    // Taken before the copy exists: a copy below one of the task's own descendants is not copied itself.
    const std::vector<TaskInTree> sources = liveTree(*this);
    return TreeCopy(list, sources).insertAt(placeOfNewTask(list, parentTask, previousTask, this));
}

}  // namespace corvane
