// The companion window over a fresh store with one account and the list "Home".
#pragma once

#include <string>

#include <QComboBox>
#include <QLineEdit>
#include <QListView>

#include "WidgetFixture.h"
#include "apps/corvane-today/CompanionWindow.h"
#include "apps/corvane-today/TaskActions.h"

namespace corvane {

class CompanionFixture : public WidgetFixture {
  public:
    CompanionFixture();

    TaskActions actions;
    CompanionWindow window{actions};

    /// Saves what is pending and shows today's tasks.
    void showToday();
    void showAddTask();
    /// Saves what is pending and shows the task.
    void showTask(const GTask& task);
    std::string taskid(const GTask& task) { return context().uriRepresentation(task); }

    /// A field of the page in sight, by its accessible name.
    QLineEdit& line(const char* name);
    WordsField& lineField(const char* name);
    QComboBox& choice(const char* name);
    NotesField& notes();
    /// Replaces a line's text as a person does, and ends with the key; none of it with Key_unknown.
    void type(const char* name, const char* text, Qt::Key end = Qt::Key_Return);
    std::string message(const char* name) { return lineField(name).message().text().toStdString(); }

    QListView& list() { return *window.todayPage().findChild<QListView*>(QStringLiteral("tasks")); }
    /// What the filter's name says beside it, when all filters have been counted.
    std::string countOf(std::uint32_t filter);
    FilterList& filters() { return *window.todayPage().findChild<FilterList*>(); }
    /// Titles of the rows in the list, a completed task's in brackets, separated by blanks.
    std::string rows();
    std::string currentTitle();
    void search(const char* text);

    std::string windowTitle() const { return window.windowTitle().toStdString(); }
    std::string notice() { return window.notices().isHidden() ? "" : window.notices().text().toStdString(); }
    /// The page's own line about what is wrong with it or its search; empty without one.
    std::string problem();

  private:
    QWidget& page() const;
};

}  // namespace corvane
