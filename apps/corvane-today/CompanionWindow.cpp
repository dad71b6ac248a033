#include "apps/corvane-today/CompanionWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/TemplateImages.h"
#include "apps/host/TaskDescription.h"
#include "model/GTask.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

/// A task's name within a sentence.
QString nameOf(const GTask& task) {
    constexpr int kLongest = 60;
    QString name = shownLine(task.name().value_or(std::u16string_view()));
    if (name.size() <= kLongest) return name;
    name.truncate(name.at(kLongest - 1).isHighSurrogate() ? kLongest - 1 : kLongest);
    return name + QChar(0x2026);
}

}  // namespace

CompanionWindow::CompanionWindow(TaskActions& actions) : actions_(actions) {
    makePages();
    notices_ = new NoticeBar(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing(*this, 1));
    layout->addWidget(makeHeader());
    layout->addWidget(pages_, 1);
    layout->addWidget(notices_);
    resize(QSize(spacing(*this, 100), spacing(*this, 86)).boundedTo(screen()->availableSize()));
    addShortcuts();
    connectPages();
    updateStyle();
    showPage(today_);
}

void CompanionWindow::makePages() {
    pages_ = new QStackedWidget(this);
    today_ = new TodayPage(actions_, pages_);
    task_ = new TaskPage(actions_, pages_);
    addTask_ = new AddTaskPage(actions_, pages_);
    privatePage_ = makePrivatePage();
    for (QWidget* page : {static_cast<QWidget*>(today_), static_cast<QWidget*>(task_),
                          static_cast<QWidget*>(addTask_), privatePage_}) {
        pages_->addWidget(page);
    }
}

QWidget* CompanionWindow::makePrivatePage() {
    QLabel* label = plainLabel(translated("Tasks are hidden while the widget is private."), pages_);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QWidget* CompanionWindow::makeHeader() {
    auto* header = new QWidget(this);
    back_ = new QToolButton(header);
    back_->setIconSize({spacing(*this, 2.6), spacing(*this, 2.6)});
    back_->setAccessibleName(translated("Back to the tasks"));
    back_->setToolTip(translated("Back to the tasks"));
    heading_ = plainLabel({}, header);
    heading_->setFont(headingFont(font()));
    add_ = new QPushButton(translated("Add task"), header);
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(spacing(*this, 2), spacing(*this, 1.5), spacing(*this, 2), 0);
    layout->addWidget(back_);
    layout->addWidget(heading_, 1);
    layout->addWidget(add_);
    return header;
}

void CompanionWindow::addShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    add(QKeySequence::New, [this] { showAddTask(); });
    add(QKeySequence::Undo, [this] { actions_.undo(); });
    add(QKeySequence::Refresh, [this] { Q_EMIT refreshWanted(); });
    add(QKeySequence::Close, [this] { close(); });
    add(QKeySequence::Find, [this] {
        showPage(today_);
        today_->focusSearch();
    });
    add(Qt::Key_Escape, [this] { goBack(); });
    add(QKeySequence::Back, [this] { goBack(); });
}

void CompanionWindow::connectPages() {
    const auto open = [this](const QString& taskid) { showTask(taskid.toStdString()); };
    connect(back_, &QToolButton::clicked, this, [this] { showPage(today_); });
    connect(add_, &QPushButton::clicked, this, &CompanionWindow::showAddTask);
    connect(today_, &TodayPage::taskWanted, this, open);
    connect(task_, &TaskPage::taskWanted, this, open);
    connect(today_, &TodayPage::completed, this, &CompanionWindow::tellCompleted);
    connect(task_, &TaskPage::completed, this, &CompanionWindow::tellCompleted);
    connect(addTask_, &AddTaskPage::added, this, &CompanionWindow::tellAdded);
    connect(notices_, &NoticeBar::undoWanted, this, [this] { actions_.undo(); });
    connect(&actions_, &TaskActions::failed, this, &CompanionWindow::showProblem);
}

// What to show

void CompanionWindow::showToday() {
    showPage(today_);
    raiseWindow();
    today_->showToday();
}

void CompanionWindow::showTask(const std::string& taskid) {
    task_->showTask(taskid);
    showPage(task_);
    raiseWindow();
}

void CompanionWindow::showAddTask() {
    showPage(addTask_);
    raiseWindow();
    addTask_->refresh();
    addTask_->focusTitle();
}

void CompanionWindow::showProblem(const QString& problem) { notices_->tellProblem(problem); }

void CompanionWindow::refresh() {
    today_->refresh();
    task_->refresh();
    addTask_->refresh();
    updateHeading();
}

void CompanionWindow::setPrivate(bool isPrivate) {
    if (isPrivate_ == isPrivate) return;
    isPrivate_ = isPrivate;
    notices_->hide();
    showPage(today_);
}

void CompanionWindow::showPage(QWidget* page) {
    if (page != task_) task_->finishTyping();
    QWidget* shown = isPrivate_ && page != addTask_ ? privatePage_ : page;
    if (shown != pages_->currentWidget()) notices_->hide();
    pages_->setCurrentWidget(shown);
    updateHeading();
}

void CompanionWindow::updateHeading() {
    const QWidget* page = pages_->currentWidget();
    back_->setVisible(page == task_ || page == addTask_);
    add_->setVisible(page != addTask_);
    const char* heading = page == task_      ? textKey("Task")
                          : page == addTask_ ? textKey("Add task")
                                             : textKey("Tasks");
    heading_->setText(translated(heading));
    const QString title = page == task_ ? task_->title() : QString();
    setWindowTitle(title.isEmpty() ? heading_->text() : title);
}

void CompanionWindow::raiseWindow() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void CompanionWindow::goBack() {
    if (pages_->currentWidget() == today_ || pages_->currentWidget() == privatePage_) {
        close();
    } else {
        showPage(today_);
    }
}

// Notices

void CompanionWindow::tellCompleted(const QString& taskid, bool isDone) {
    const GTask* task = TaskActions::taskNamed(taskid.toStdString());
    if (!task) return;
    QString text;
    if (!isDone) {
        text = translated("\u201C%@\u201D is to be done again.", nameOf(*task));
    } else if (task->completed()) {
        text = translated("\u201C%@\u201D is done.", nameOf(*task));
    } else {
        text = qtText(stringWithFormat(localizedString("\u201C%1$@\u201D is done this time. Next: %2$@."),
                                       {coreText(nameOf(*task)), dueInWords(*task)}));
    }
    notices_->tell(text, NoticeBar::Way::kUndo);
}

void CompanionWindow::tellAdded(const QString& taskid) {
    const GTask* task = TaskActions::taskNamed(taskid.toStdString());
    if (!task) return;
    // What is private on the screen is so in a notice too.
    if (isPrivate_) return notices_->tell(translated("The task has been added."));
    notices_->tell(qtText(stringWithFormat(localizedString("Added \u201C%1$@\u201D to %2$@."),
                                           {coreText(nameOf(*task)), placeInWords(*task)})));
}

// Events

void CompanionWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::LayoutDirectionChange) {
        updateStyle();
    }
}

// A style sheet that is set changes the palette in its turn.
void CompanionWindow::updateStyle() {
    if (isStyling_) return;
    isStyling_ = true;
    const QString style = companionStyleSheet(paletteOf(*this));
    if (styleSheet() != style) setStyleSheet(style);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    back_->setIcon(templateIcon(isMirrored ? "Chevron-Right" : "Chevron-Left", paletteOf(*this).accent()));
    isStyling_ = false;
}

void CompanionWindow::closeEvent(QCloseEvent* event) {
    task_->finishTyping();
    QWidget::closeEvent(event);
}

}  // namespace corvane
