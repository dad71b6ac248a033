#include "apps/corvane-today/TaskListModel.h"

#include <algorithm>
#include <utility>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/host/JoinedWords.h"
#include "apps/host/Sentence.h"
#include "apps/host/WritingDirection.h"
#include "dates/DateBasics.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

QString titleOf(const GTask& task) { return shownLine(task.name().value_or(std::u16string_view())); }

QString toolTipOf(const GTask& task) {
    return shownToolTip(task.name().value_or(std::u16string_view()),
                        task.notes().value_or(std::u16string_view()));
}

bool isLate(const GTask& task) {
    const std::optional<Date> due = task.dueDate();
    if (!due || task.completed()) return false;
    return *due < (task.hasDueTime() ? now() : dateOfTodayMidnightWithDaysOffset(0));
}

QString listNameOf(const GTask& task) {
    const GList* list = task.list();
    return list ? shownLine(list->name().value_or(std::u16string_view())) : QString();
}

// One name tells all that the row shows, done or not first.
QString spokenRow(const TaskListRow& row) {
    std::vector<std::u16string> words;
    if (row.isDone) words.push_back(localizedString("Done"));
    words.push_back(rowInWords(row.widget));
    if (!row.list.isEmpty()) {
        words.push_back(stringWithFormat(localizedString("list %@"), {isolatedText(coreText(row.list))}));
    }
    return qtText(joinedWords(words));
}

}  // namespace

void TaskListModel::setTasks(std::vector<GTask*> tasks) {
    if (tasks == tasks_) {
        if (!tasks_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        return;
    }
    beginResetModel();
    tasks_ = std::move(tasks);
    endResetModel();
}

TaskListRow TaskListModel::row(const QModelIndex& index) const {
    const GTask& task = *tasks_[static_cast<std::size_t>(index.row())];
    return {widgetRow(task), listNameOf(task), task.completed(), isLate(task)};
}

std::string TaskListModel::taskid(const QModelIndex& index) const {
    const GTask& task = *tasks_[static_cast<std::size_t>(index.row())];
    const ManagedObjectContext* context = task.managedObjectContext();
    return context ? context->uriRepresentation(task) : std::string();
}

QModelIndex TaskListModel::indexOf(const std::string& taskid) const {
    const auto found = std::ranges::find(tasks_, TaskActions::taskNamed(taskid));
    return found == tasks_.end() ? QModelIndex() : index(static_cast<int>(found - tasks_.begin()));
}

int TaskListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(tasks_.size());
}

QVariant TaskListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    if (role == Qt::DisplayRole) return titleOf(*tasks_[static_cast<std::size_t>(index.row())]);
    if (role == Qt::ToolTipRole) return toolTipOf(*tasks_[static_cast<std::size_t>(index.row())]);
    if (role == Qt::AccessibleTextRole) return spokenRow(row(index));
    return {};
}

}  // namespace corvane
