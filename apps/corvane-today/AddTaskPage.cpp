#include "apps/corvane-today/AddTaskPage.h"

#include <utility>
#include <vector>

#include <QShortcut>
#include <QVBoxLayout>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/FieldForm.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/TaskWords.h"
#include "apps/corvane-today/WindowSettings.h"
#include "apps/host/Places.h"
#include "model/GSData.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

// Words stay as typed until the task is added.
bool keepTyped(const QString&) { return false; }

}  // namespace

AddTaskPage::AddTaskPage(TaskActions& actions, QWidget* parent) : QWidget(parent), actions_(actions) {
    title_ = new WordsField(readTitle, keepTyped, this);
    describeField(*title_, textKey("Title"), textKey("What is there to do?"));
    title_->line().setFont(titleFont(font()));
    list_ = new ListChoice(this);
    due_ = new WordsField(readDue, keepTyped, this);
    describeField(*due_, textKey("Due"), kDueExample);
    repeat_ = new WordsField(readRepeat, keepTyped, this);
    describeField(*repeat_, textKey("Repeat"), kRepeatExample);
    priority_ = new PriorityChoice(this);
    notes_ = new NotesField(keepTyped, this);
    add_ = new QPushButton(translated("Add task"), this);
    makeLayout();
    list_->showLists(nullptr);
    list_->choose(lastUsedList());
    connect(add_, &QPushButton::clicked, this, &AddTaskPage::add);
    connect(&title_->line(), &QLineEdit::returnPressed, this, &AddTaskPage::add);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, &AddTaskPage::add);
    }
}

void AddTaskPage::makeLayout() {
    const FieldRow rows[] = {
        {textKey("List"),     list_    },
        {textKey("Due"),      due_     },
        {textKey("Repeat"),   repeat_  },
        {textKey("Priority"), priority_},
        {textKey("Notes"),    notes_   },
    };
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing(*this, 3), spacing(*this, 1), spacing(*this, 3), spacing(*this, 2));
    layout->setSpacing(spacing(*this, 1.5));
    layout->addWidget(title_);
    layout->addLayout(makeFieldForm(rows, this));
    layout->addWidget(add_, 0, Qt::AlignTrailing);
    layout->addStretch(1);
}

void AddTaskPage::refresh() {
    if (isVisible()) list_->showLists(nullptr);
}

void AddTaskPage::focusTitle() { title_->line().setFocus(); }

bool AddTaskPage::isEmpty() const {
    return title_->text().isEmpty() && due_->text().isEmpty() && repeat_->text().isEmpty() &&
           notes_->text().isEmpty();
}

bool AddTaskPage::isUnderstood() {
    for (WordsField* field : {title_, due_, repeat_}) {
        if (field->check()) continue;
        field->line().setFocus();
        return false;
    }
    return true;
}

bool AddTaskPage::add() {
    if (!isUnderstood()) return false;
    const auto taskid =
        actions_.add([this](ManagedObjectContext& context) -> GTask& { return makeTask(context); });
    if (!taskid) return false;
    // Only a convenience: settings that cannot be written are no failure of the task.
    if (const GList* list = TaskActions::taskNamed(*taskid)->list()) {
        const QString uri = QString::fromStdString(list->managedObjectContext()->uriRepresentation(*list));
        rememberUsedList(uri);
        list_->choose(uri);
    }
    beginAnew();
    Q_EMIT added(QString::fromStdString(*taskid));
    return true;
}

GTask& AddTaskPage::makeTask(ManagedObjectContext& context) const {
    GList* chosen = list_->chosenList();
    GList& list = chosen ? *chosen : listForNewTasks(context);
    GTask& task = GTask::insertNewTaskToList(list, nullptr, lastRootTask(list));
    takeTitle(task, title_->text());
    takeNotes(task, notes_->text());
    if (priority_->priority() != 0) task.setPriority(priority_->priority());
    if (!due_->text().trimmed().isEmpty()) takeDue(task, due_->text());
    if (!repeat_->text().trimmed().isEmpty()) takeRepeat(task, repeat_->text());
    return task;
}

void AddTaskPage::beginAnew() {
    for (WordsField* field : {title_, due_, repeat_}) field->giveUpTyping();
    notes_->forgetTyping();
    priority_->showPriority(0);
    focusTitle();
}

}  // namespace corvane
