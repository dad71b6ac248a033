// Tasks by filter: today's first, the other filters beside them, and a search by text or predicate.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QCheckBox>
#include <QLineEdit>
#include <QListView>
#include <QTimer>
#include <QWidget>

#include "apps/corvane-today/AccountChoice.h"
#include "apps/corvane-today/FilterList.h"
#include "apps/corvane-today/MessageLine.h"
#include "apps/corvane-today/TaskListModel.h"
#include "apps/host/TaskSelection.h"

namespace corvane {

class TaskActions;

class TodayPage : public QWidget {
    Q_OBJECT
  public:
    /// @param actions  outlives the page
    TodayPage(TaskActions& actions, QWidget* parent);

    /// Chooses today's tasks, without a search.
    void showToday();
    /// Fetches anew; the current task stays the current one.
    void refresh();
    void focusSearch();

  Q_SIGNALS:
    void taskWanted(const QString& taskid);
    /// Done, or done no more. @param isDone  as it was asked for
    void completed(const QString& taskid, bool isDone);

  protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Found {
        std::vector<GTask*> tasks;
        QString problem;  ///< empty: all is well
        QString hint;     ///< why the search is not read as a predicate
    };
    /// A task that was completed here. It keeps its row for a moment, so that nobody takes it for lost.
    struct Lingering {
        std::string taskid;
        std::size_t place = 0;
    };

    void makeList();
    void makeLayout();
    TaskSelection selection() const;
    Found findTasks() const;
    void addLingering(std::vector<GTask*>& tasks) const;
    void showFound(Found found);
    void showMessage(const Found& found);
    void startAnew();
    void toggle(const QModelIndex& index);
    void open(const QModelIndex& index);

    TaskActions& actions_;
    FilterList* filters_;
    QLineEdit* search_;
    AccountChoice* account_;
    QCheckBox* showsDone_;
    MessageLine* problem_;
    QListView* list_;
    QLabel* empty_;
    TaskListModel* model_;
    std::string currentTaskid_;  ///< outlives the objects, which a refresh may replace
    QTimer searchDelay_;
    QTimer searchRest_;  ///< runs while the search is being typed
    QTimer lingeringEnd_;
    std::optional<Lingering> lingering_;
};

}  // namespace corvane
