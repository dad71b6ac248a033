// The widget's window over a fresh store with one account and one list.
#pragma once

#include <functional>
#include <string>

#include <QApplication>
#include <QElapsedTimer>
#include <QString>

#include "WidgetFixture.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/WidgetWindow.h"
#include "apps/host/WidgetHost.h"

namespace corvane {

class WindowFixture : public WidgetFixture {
  public:
    explicit WindowFixture(const WidgetHostOptions& options = {}, const TestSurroundings& surroundings = {});

    std::vector<std::u16string> opened;  ///< URLs that taps led to
    QtTextMeasuring measuring{WidgetFonts(QApplication::font())};
    WidgetHost host;
    TaskActions actions;
    WidgetWindow window;

    /// Saves what is pending, refreshes, and shows the window.
    void show();
    /// Titles of the rows in sight, a completed task's in brackets, separated by blanks.
    std::string titles() const;
    /// The title of the row that has the focus; empty for none.
    std::string focusedTitle() const;
    TaskRow& row(std::size_t index) { return *window.rows().at(index); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Whether a widget of this accessible name can be seen, whatever it is.
    bool shows(const QString& name) const;
};

/// Lets events happen until the condition holds; a test that fails waits longest.
bool waitUntil(const std::function<bool()>& condition);

}  // namespace corvane
