// The tasks of a fetch as a list's rows. A row is read when it is looked at, its neighbours with it.
#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>

#include "widget/WidgetSnapshot.h"

namespace corvane {

class GTask;

/// What a row shows.
struct TaskListRow {
    WidgetRow widget;
    QString list;  ///< the name of the task's list, on one line
    bool isDone = false;
    bool isLate = false;
};

class TaskListModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using QAbstractListModel::QAbstractListModel;

    /// Shows a fetch's result, which holds as long as its context. Rows of the same tasks stay what they are
    /// to views.
    void setTasks(std::vector<GTask*> tasks);
    const std::vector<GTask*>& tasks() const { return tasks_; }

    /// An index that is valid.
    TaskListRow row(const QModelIndex& index) const;
    std::string taskid(const QModelIndex& index) const;
    /// Invalid where the task has no row.
    QModelIndex indexOf(const std::string& taskid) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    std::vector<GTask*> tasks_;
};

}  // namespace corvane
