#include "apps/corvane-today/TaskActions.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "apps/corvane-today/QtText.h"
#include "apps/host/ProgramStore.h"
#include "model/GSData.h"
#include "model/GTask.h"

namespace corvane {
namespace {

constexpr std::size_t kMostUndoables = 50;

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
    undoables_.push_back({taskid, std::move(taken)});
    if (undoables_.size() > kMostUndoables) undoables_.erase(undoables_.begin());
    return true;
}

bool TaskActions::edit(const std::string& taskid, const std::function<void(GTask&)>& change) {
    GTask* task = taskNamed(taskid);
    if (!task) {
        Q_EMIT failed(translated("This task is not in the store any more."));
        return false;
    }
    if (const GList* list = task->list(); list && list->isReadonly()) {
        Q_EMIT failed(translated("The list of this task is read-only."));
        return false;
    }
    change(*task);
    return save();
}

std::optional<std::string> TaskActions::add(const std::function<GTask&(ManagedObjectContext&)>& make) {
    GSData& data = GSData::sharedInstance();
    launchForChanging(data);
    if (const std::optional<std::string> problem = storeProblem(data)) {
        Q_EMIT failed(QString::fromStdString(*problem));
        return std::nullopt;
    }
    const GTask& task = make(context());
    if (!save()) return std::nullopt;
    return context().uriRepresentation(task);
}

std::optional<std::string> TaskActions::undoableTask() const {
    return undoables_.empty() ? std::nullopt : std::optional(undoables_.back().taskid);
}

bool TaskActions::undo() { return !undoables_.empty() && undo(std::string(undoables_.back().taskid)); }

bool TaskActions::undo(const std::string& taskid) {
    const auto last =
        std::find_if(undoables_.rbegin(), undoables_.rend(),
                     [&taskid](const Undoable& candidate) { return candidate.taskid == taskid; });
    if (last == undoables_.rend()) return false;
    const CompletionUndo taken = std::move(last->undo);
    undoables_.erase(std::next(last).base());
    const bool isComplete = taken.restore(context());
    if (!save()) return false;
    if (!isComplete) Q_EMIT failed(translated("Changed elsewhere meanwhile; not all could be undone."));
    return true;
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
