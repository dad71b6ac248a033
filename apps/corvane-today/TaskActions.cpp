#include "apps/corvane-today/TaskActions.h"

#include <utility>

#include "apps/corvane-today/QtText.h"
#include "model/GSData.h"
#include "model/GTask.h"

namespace corvane {
namespace {

ManagedObjectContext& context() { return GSData::sharedInstance().viewContext(); }

}  // namespace

GTask* TaskActions::taskNamed(const std::string& taskid) {
    auto* task = dynamic_cast<GTask*>(context().objectWithUri(taskid));
    return task && !task->removed() ? task : nullptr;
}

bool TaskActions::complete(const std::string& taskid) {
    return act(taskid, [](GTask& task) { return completeTask(task).undo; });
}

bool TaskActions::reopen(const std::string& taskid) {
    return act(taskid, [](GTask& task) { return reopenTask(task).undo; });
}

bool TaskActions::moveToTomorrow(const std::string& taskid) { return act(taskid, corvane::moveToTomorrow); }

bool TaskActions::act(const std::string& taskid, const UndoableChange& change) {
    CompletionUndo taken;
    if (!edit(taskid, [&](GTask& task) { taken = change(task); })) return false;
    undo_ = std::move(taken);
    undoableTask_ = taskid;
    return true;
}

bool TaskActions::edit(const std::string& taskid, const std::function<void(GTask&)>& change) {
    GTask* task = taskNamed(taskid);
    if (!task) {
        Q_EMIT failed(translated("This task is not in the store any more."));
        return false;
    }
    change(*task);
    return save();
}

bool TaskActions::undo() {
    if (!undoableTask_) return false;
    undo_.restore(context());
    undoableTask_.reset();
    return save();
}

bool TaskActions::save() {
    if (const std::optional<StoreError> error = context().save()) {
        context().rollback();
        Q_EMIT failed(QString::fromStdString(error->message));
        return false;
    }
    Q_EMIT changed();
    return true;
}

}  // namespace corvane
