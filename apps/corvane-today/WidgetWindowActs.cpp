// What the user does in the window: keys, menus, acts on rows.
#include <algorithm>
#include <functional>
#include <utility>

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMetaMethod>
#include <QPointer>

#include "apps/corvane-today/KeyHelp.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/WidgetWindow.h"

namespace corvane {
namespace {

void addEntry(QMenu& menu, const QString& text, const QKeySequence& keys, std::function<void()> act) {
    QAction* action = menu.addAction(text, std::move(act));
    action->setShortcut(keys);
    action->setShortcutVisibleInContextMenu(true);
}

}  // namespace

// Rows

TaskRow* WidgetWindow::focusedRow() const {
    for (QWidget* widget = focusWidget(); widget && widget != this; widget = widget->parentWidget()) {
        if (auto* row = qobject_cast<TaskRow*>(widget)) return row;
    }
    return nullptr;
}

std::size_t WidgetWindow::indexOf(const TaskRow* row) const {
    return static_cast<std::size_t>(std::ranges::find(shownRows_, row) - shownRows_.begin());
}

void WidgetWindow::focusRow(std::size_t index) {
    const std::vector<TaskRow*> visible = rows();
    if (visible.empty()) return;
    visible[std::min(index, visible.size() - 1)]->setFocus(Qt::OtherFocusReason);
}

void WidgetWindow::focusNextLiveRow(std::size_t index) {
    const auto isLive = [](const TaskRow* row) { return row->act() == RowAct::kNone; };
    const std::vector<TaskRow*> visible = rows();
    const auto start = visible.begin() + static_cast<std::ptrdiff_t>(std::min(index, visible.size()));
    auto next = std::find_if(start, visible.end(), isLive);
    if (next == visible.end()) next = std::find_if(visible.begin(), start, isLive);
    focusRow(next == visible.end() ? index : static_cast<std::size_t>(next - visible.begin()));
}

void WidgetWindow::act(TaskRow& row, RowAct act) {
    if (isPreview_ || row.act() != RowAct::kNone) return;
    const std::size_t place = indexOf(&row);
    const bool hadFocus = focusedRow() == &row;
    const std::string taskid = row.taskid();
    acts_.add(row.content(), act, place);
    const bool isDone =
        act == RowAct::kCompleted ? actions_.complete(taskid) : actions_.moveToTomorrow(taskid);
    if (!isDone) {
        acts_.remove(taskid);
        showRefresh();
    }
    if (hadFocus) focusNextLiveRow(isDone ? place + 1 : place);
}

void WidgetWindow::takeBack(const std::string& taskid) {
    acts_.remove(taskid);
    if (!actions_.undo(taskid)) Q_EMIT refreshWanted();
    const auto row = rows_.find(taskid);
    if (row != rows_.end()) row->second->setFocus(Qt::OtherFocusReason);
}

void WidgetWindow::openRow(const TaskRow& row) {
    const std::vector<WidgetRow>& shown = host_.snapshot().rows;
    const auto found = std::ranges::find(shown, row.taskid(), &WidgetRow::taskid);
    if (found == shown.end()) return;
    constexpr std::size_t kOnlySection = 0;
    host_.controller().tableView.selectRow({kOnlySection, static_cast<std::size_t>(found - shown.begin())});
}

// Menus

void WidgetWindow::showRowMenu(TaskRow& row, const QPoint& globalPlace) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The row may be gone by the time that an entry is chosen.
    const auto withRow = [row = QPointer(&row)](void (TaskRow::*signal)()) {
        if (row) Q_EMIT(row->*signal)();
    };
    if (row.act() != RowAct::kNone) {
        addEntry(*menu, translated("Undo"), QKeySequence::Undo, [=] { withRow(&TaskRow::undoWanted); });
    } else {
        addEntry(*menu, translated("Open"), Qt::Key_Return, [=] { withRow(&TaskRow::openWanted); });
        addEntry(*menu, translated("Done"), Qt::Key_Space, [=] { withRow(&TaskRow::completionWanted); });
        menu->addSeparator();
        addReminders(*menu, row.taskid());
        addEntry(*menu, translated("Move to tomorrow"), {}, [=] { withRow(&TaskRow::moveWanted); });
    }
    menu->popup(globalPlace);
}

void WidgetWindow::addReminders(QMenu& menu, const std::string& taskid) {
    constexpr int kSoon = 10;
    constexpr int kLater = 60;
    if (!isSignalConnected(QMetaMethod::fromSignal(&WidgetWindow::reminderWanted))) return;
    const QString task = QString::fromStdString(taskid);
    addEntry(menu, translated("Remind me in 10 minutes"), {},
             [this, task] { Q_EMIT reminderWanted(task, kSoon); });
    addEntry(menu, translated("Remind me in 1 hour"), {},
             [this, task] { Q_EMIT reminderWanted(task, kLater); });
}

void WidgetWindow::showMenu(const QPoint& globalPlace) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addEntry(*menu, translated("Refresh"), Qt::Key_F5, [this] { Q_EMIT refreshWanted(); });
    addEntry(*menu, isPrivate() ? translated("Show the titles") : translated("Hide the titles"), Qt::Key_P,
             [this] { togglePrivate(); });
    addEntry(*menu, translated("Show the keys"), Qt::Key_Question, [this] { showKeys(); });
    Q_EMIT menuOpening(menu);
    menu->popup(globalPlace);
}

// Keys

const std::vector<WidgetWindow::Key>& WidgetWindow::keys() {
    static const std::vector<Key> keys = {
        {Qt::Key_Up,       Qt::NoModifier,      &WidgetWindow::focusUp        },
        {Qt::Key_Down,     Qt::NoModifier,      &WidgetWindow::focusDown      },
        {Qt::Key_Home,     Qt::NoModifier,      &WidgetWindow::focusFirst     },
        {Qt::Key_End,      Qt::NoModifier,      &WidgetWindow::focusLast      },
        {Qt::Key_Return,   Qt::NoModifier,      &WidgetWindow::openFocused    },
        {Qt::Key_Enter,    Qt::KeypadModifier,  &WidgetWindow::openFocused    },
        {Qt::Key_Space,    Qt::NoModifier,      &WidgetWindow::completeFocused},
        {Qt::Key_N,        Qt::ControlModifier, &WidgetWindow::addTask        },
        {Qt::Key_Z,        Qt::ControlModifier, &WidgetWindow::undoLast       },
        {Qt::Key_F5,       Qt::NoModifier,      &WidgetWindow::refreshWanted  },
        {Qt::Key_F10,      Qt::ShiftModifier,   &WidgetWindow::showFocusedMenu},
        {Qt::Key_M,        Qt::NoModifier,      &WidgetWindow::showAll        },
        {Qt::Key_P,        Qt::NoModifier,      &WidgetWindow::togglePrivate  },
        {Qt::Key_Escape,   Qt::NoModifier,      &WidgetWindow::hideWanted     },
        {Qt::Key_Question, Qt::NoModifier,      &WidgetWindow::showKeys       },
        {Qt::Key_Question, Qt::ShiftModifier,   &WidgetWindow::showKeys       },
    };
    return keys;
}

void WidgetWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_T && event->modifiers() == Qt::NoModifier) {
        if (!event->isAutoRepeat() && !isPreview_) Q_EMIT previewWanted(true);
        return;
    }
    const auto key = std::ranges::find_if(keys(), [event](const Key& candidate) {
        return candidate.key == event->key() && candidate.modifiers == event->modifiers();
    });
    if (key == keys().end()) return QWidget::keyPressEvent(event);
    (this->*key->act)();
}

void WidgetWindow::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_T || event->isAutoRepeat()) return QWidget::keyReleaseEvent(event);
    if (isPreview_) Q_EMIT previewWanted(false);
}

// A button would take these keys for a way to its neighbour.
bool WidgetWindow::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    auto* press = static_cast<QKeyEvent*>(event);
    if (press->key() != Qt::Key_Up && press->key() != Qt::Key_Down) return false;
    keyPressEvent(press);
    return true;
}

void WidgetWindow::focusUp() {
    const TaskRow* row = focusedRow();
    if (!row) return focusLast();
    if (const std::size_t index = indexOf(row); index > 0) focusRow(index - 1);
}

void WidgetWindow::focusDown() {
    const TaskRow* row = focusedRow();
    focusRow(row ? indexOf(row) + 1 : 0);
}

void WidgetWindow::focusFirst() { focusRow(0); }

void WidgetWindow::focusLast() { focusRow(shownRows_.size()); }

void WidgetWindow::openFocused() {
    if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) return button->click();
    if (const TaskRow* row = focusedRow()) openRow(*row);
}

void WidgetWindow::completeFocused() {
    if (TaskRow* row = focusedRow()) act(*row, RowAct::kCompleted);
}

// The menu key comes as an event of its own; many keyboards have none.
void WidgetWindow::showFocusedMenu() {
    if (TaskRow* row = focusedRow()) showRowMenu(*row, row->mapToGlobal(row->rect().center()));
}

void WidgetWindow::addTask() { host_.controller().addTaskClicked(); }

void WidgetWindow::undoLast() {
    if (const auto taskid = actions_.undoableTask()) takeBack(*taskid);
}

void WidgetWindow::showAll() { host_.controller().showAllClicked(); }

void WidgetWindow::togglePrivate() { setPrivate(!isPrivate()); }

void WidgetWindow::toggleMode() {
    const bool isExpanded = host_.widgetActiveDisplayMode() == DisplayMode::kExpanded;
    setMode(isExpanded ? DisplayMode::kCompact : DisplayMode::kExpanded);
}

void WidgetWindow::setMode(DisplayMode mode) {
    host_.setDisplayMode(mode);
    showRefresh();
    Q_EMIT arrangementChanged();
}

void WidgetWindow::showKeys() { showKeyHelp(this); }

}  // namespace corvane
