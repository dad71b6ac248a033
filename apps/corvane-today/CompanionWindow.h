// A small window of our own for what the hand-over URLs name: today's tasks, one task, a new task.
#pragma once

#include <string>

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QWidget>

#include "apps/corvane-today/AddTaskPage.h"
#include "apps/corvane-today/NoticeBar.h"
#include "apps/corvane-today/TaskPage.h"
#include "apps/corvane-today/TodayPage.h"

namespace corvane {

class TaskActions;

class CompanionWindow : public QWidget {
    Q_OBJECT
  public:
    /// @param actions  outlives the window
    explicit CompanionWindow(TaskActions& actions);

    // Each raises the window.
    void showToday();
    /// A task that is not in the store is said to be none.
    void showTask(const std::string& taskid);
    void showAddTask();
    /// Something that could not be done, beside whatever shows.
    void showProblem(const QString& problem);

    /// Shows the store as it is now; what is being typed stays.
    void refresh();
    /// Private: tasks are hidden, only new ones can be typed.
    void setPrivate(bool isPrivate);

    TodayPage& todayPage() { return *today_; }
    TaskPage& taskPage() { return *task_; }
    AddTaskPage& addTaskPage() { return *addTask_; }
    NoticeBar& notices() { return *notices_; }

  Q_SIGNALS:
    void refreshWanted();

  protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void makePages();
    QWidget* makeHeader();
    QWidget* makePrivatePage();
    void addShortcuts();
    void connectPages();

    void showPage(QWidget* page);
    void updateHeading();
    void updateStyle();
    void raiseWindow();
    void goBack();
    void tellCompleted(const QString& taskid, bool isDone);
    void tellAdded(const QString& taskid);

    TaskActions& actions_;
    QToolButton* back_;
    QLabel* heading_;
    QPushButton* add_;
    QStackedWidget* pages_;
    TodayPage* today_;
    TaskPage* task_;
    AddTaskPage* addTask_;
    QWidget* privatePage_;
    NoticeBar* notices_;
    bool isPrivate_ = false;
    bool isStyling_ = false;
};

}  // namespace corvane
