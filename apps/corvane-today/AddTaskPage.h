// A form for a new task.
#pragma once

#include <string>

#include <QPushButton>
#include <QWidget>

#include "apps/corvane-today/ListChoice.h"
#include "apps/corvane-today/NotesField.h"
#include "apps/corvane-today/PriorityChoice.h"
#include "apps/corvane-today/WordsField.h"

namespace corvane {

class GList;
class GTask;
class ManagedObjectContext;
class TaskActions;

class AddTaskPage : public QWidget {
    Q_OBJECT
  public:
    /// @param actions  outlives the page
    AddTaskPage(TaskActions& actions, QWidget* parent);

    /// Offers the lists as they are now; what is being typed stays.
    void refresh();
    void focusTitle();
    bool isEmpty() const;

    /// Adds the task, where its words mean something, and begins anew. Store, account and list are made where
    /// there are none yet.
    bool add();

  Q_SIGNALS:
    void added(const QString& taskid);

  private:
    void makeLayout();
    bool isUnderstood();
    GTask& makeTask(ManagedObjectContext& context) const;
    void beginAnew();

    TaskActions& actions_;
    WordsField* title_;
    ListChoice* list_;
    WordsField* due_;
    WordsField* repeat_;
    PriorityChoice* priority_;
    NotesField* notes_;
    QPushButton* add_;
};

}  // namespace corvane
