// One task with all its fields, to read and to change. What is finished typing is saved at once.
#pragma once

#include <string>

#include <QPushButton>
#include <QScrollArea>

#include "apps/corvane-today/DoneBox.h"
#include "apps/corvane-today/ListChoice.h"
#include "apps/corvane-today/MessageLine.h"
#include "apps/corvane-today/NotesField.h"
#include "apps/corvane-today/PriorityChoice.h"
#include "apps/corvane-today/SubtaskTree.h"
#include "apps/corvane-today/WordsField.h"

class QFormLayout;

namespace corvane {

class TaskActions;

class TaskPage : public QScrollArea {
    Q_OBJECT
  public:
    /// @param actions  outlives the page
    TaskPage(TaskActions& actions, QWidget* parent);

    /// Shows a task, after what was being typed about another one has been taken.
    void showTask(const std::string& taskid);
    /// Shows the task as it is stored now; what is being typed stays.
    void refresh();
    /// Takes what is being typed, as far as it means something.
    void finishTyping();

    const std::string& taskid() const { return taskid_; }
    /// Of the task shown, on one line.
    QString title() const;

  Q_SIGNALS:
    void taskWanted(const QString& taskid);
    /// Done, or done no more. @param isDone  as it was asked for
    void completed(const QString& taskid, bool isDone);

  private:
    using Change = void (*)(GTask&, const QString&);
    void makeFields(QWidget* content);
    QFormLayout* makeForm(QWidget* content);
    WordsField* addField(QWidget* content, WordsField::Reader reader, Change change);
    void connectChoices();

    void showFields(GTask& task);
    void showWords(const GTask& task);
    void showPlaceAlert(const GTask& task);
    void showParent(const GTask& task);
    void showState(const GTask& task);
    void showMissing();
    void setReadOnly(bool isReadOnly);
    void forgetTyping();

    bool edit(Change change, const QString& text);
    void setCompletion(const QString& taskid, bool isDone);
    void moveToChosenList();

    TaskActions& actions_;
    std::string taskid_;
    bool isShown_ = false;  ///< the task was there when it was last looked for

    MessageLine* banner_;
    DoneBox* done_;
    WordsField* title_;
    MessageLine* state_;
    QPushButton* parent_;
    WordsField* due_;
    WordsField* repeat_;
    WordsField* alert_;
    QLineEdit* placeAlert_;  ///< only to read
    PriorityChoice* priority_;
    ListChoice* list_;
    NotesField* notes_;
    QFormLayout* form_;
    QWidget* fields_;
    QLabel* subtasksLabel_;
    SubtaskTree* subtasks_;
};

}  // namespace corvane
