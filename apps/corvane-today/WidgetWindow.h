// The widget's window: draws what the controller and its cells say, and takes the user's taps and keys.
//
// Beside the controller's content it has lines of its own: the header, the rows of tasks that were completed
// a moment ago, and one line when the store cannot be read.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QLabel>
#include <QPoint>
#include <QTimer>
#include <QWidget>

#include "apps/corvane-today/EmptyView.h"
#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/RecentActs.h"
#include "apps/corvane-today/ShowAllButton.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/TaskRow.h"
#include "apps/corvane-today/WidgetLook.h"
#include "apps/corvane-today/WindowHeader.h"
#include "apps/host/WidgetHost.h"

class QMenu;

namespace corvane {

class WidgetWindow : public QWidget {
    Q_OBJECT
  public:
    /// @param host, measuring, actions  outlive the window
    WidgetWindow(WidgetHost& host, QtTextMeasuring& measuring, TaskActions& actions);
    ~WidgetWindow() override;

    /// Takes over what the host's last refresh shows.
    void showRefresh();
    /// One line of the program's own below the content; empty: none. It goes with the next good refresh.
    void showMessage(const QString& message);
    /// What a screen reader says of the window.
    void describe(const QString& sentence);
    /// What a row tells of its task's reminder; called with the task's object URI, empty without one.
    void setReminderText(std::function<QString(const std::string& taskid)> text);
    /// Marks what is shown as another day's.
    void setPreview(bool isPreview);

    /// Private: titles and notes of tasks are hidden.
    bool isPrivate() const { return look_.isPrivate; }
    void setPrivate(bool isPrivate);
    void setMode(DisplayMode mode);
    void setColors(const WidgetPalette& palette);

    /// The rows in sight, from the top.
    std::vector<TaskRow*> rows() const;
    /// How long a completed task's row stays.
    void setActDuration(std::chrono::milliseconds duration) { acts_.setDuration(duration); }

  Q_SIGNALS:
    void refreshWanted();
    void previewWanted(bool isPreview);
    void privacyChanged(bool isPrivate);
    /// A reminder of the task, which itself stays as it is.
    void reminderWanted(const QString& taskid, int minutes);
    void hideWanted();
    void closeWanted();
    /// The window has drawn itself.
    void painted();
    /// The menu is about to show; whoever listens adds to it.
    void menuOpening(QMenu* menu);
    /// Place, size or mode have come to rest after a change.
    void arrangementChanged();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* button, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// A row as it is to show: a live one of the table, or what became of one.
    struct Item {
        RowContent content;
        RowAct act = RowAct::kNone;
    };
    struct Key {
        int key;
        Qt::KeyboardModifiers modifiers;
        void (WidgetWindow::*act)();
    };
    static const std::vector<Key>& keys();

    void connectParts();
    void updateLook();

    // Rows
    std::vector<Item> items();
    enum class MessageKind { kProblem, kInvitation };
    /// Why there is nothing to show; nothing when the store was read.
    void showStoreMessage();
    void setMessage(const QString& message, MessageKind kind);
    void updateMessageColor();
    RowContent contentOf(std::size_t row);
    void showRows(const std::vector<Item>& items);
    TaskRow* makeRow();
    void updateTabOrder();

    // Layout
    double contentWidth() const;
    void layoutViews();
    class Room;
    void layoutRows(Room& room);
    void layoutBelowRows(Room& room);
    void followContent();
    QSize wantedSize() const;
    int messageWidth() const;
    /// In pixels; 0 without a message.
    double messageHeight() const;
    void takeUserSize();

    // Acts
    TaskRow* focusedRow() const;
    std::size_t indexOf(const TaskRow* row) const;
    void act(TaskRow& row, RowAct act);
    void takeBack(const std::string& taskid);
    void openRow(const TaskRow& row);
    void showRowMenu(TaskRow& row, const QPoint& globalPlace);
    void addReminders(QMenu& menu, const std::string& taskid);
    void showMenu(const QPoint& globalPlace);
    void focusRow(std::size_t index);
    void focusNextLiveRow(std::size_t index);

    // Keys
    void focusUp();
    void focusDown();
    void focusFirst();
    void focusLast();
    void openFocused();
    void completeFocused();
    void showFocusedMenu();
    void addTask();
    void undoLast();
    void showAll();
    void togglePrivate();
    void toggleMode();
    void showKeys();

    WidgetHost& host_;
    QtTextMeasuring& measuring_;
    TaskActions& actions_;
    WidgetLook look_;
    std::function<QString(const std::string&)> reminderText_;
    RecentActs acts_;
    WindowHeader* header_;
    TaskList* list_;
    std::map<std::string, TaskRow*> rows_;
    std::vector<TaskRow*> shownRows_;
    EmptyView* emptyView_;
    QLabel* footer_;
    ShowAllButton* showAllButton_;
    QLabel* message_;
    MessageKind messageKind_ = MessageKind::kProblem;
    bool hasHadStore_ = false;
    QSize wantedSize_;
    QTimer settling_;
    bool isUserSizing_ = false;
    bool isPreview_ = false;
};

}  // namespace corvane
