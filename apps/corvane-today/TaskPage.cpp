#include "apps/corvane-today/TaskPage.h"

#include <utility>
#include <vector>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/FieldForm.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/TaskWords.h"
#include "apps/host/Places.h"
#include "apps/host/RepeatWords.h"
#include "apps/host/TaskDescription.h"
#include "apps/host/TaskEditing.h"
#include "dates/DateTexts.h"
#include "model/GSData.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

QString storedText(std::optional<std::u16string_view> text) {
    return qtText(text.value_or(std::u16string_view()));
}

QString alertHint(const GTask& task) {
    const bool hasAlert = task.alertEnabled() && task.alertDate();
    return hasAlert ? qtText(stringOfDateTime(*task.alertDate())) : QString();
}

QString repeatText(const GTask& task) {
    return task.alertRepeat() == kNoRepeat ? QString() : qtText(repeatInWords(repeatOfTask(task)));
}

}  // namespace

TaskPage::TaskPage(TaskActions& actions, QWidget* parent) : QScrollArea(parent), actions_(actions) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget;
    makeFields(content);
    auto* head = new QHBoxLayout;
    head->addWidget(done_, 0, Qt::AlignTop);
    head->addWidget(title_, 1);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(spacing(*this, 3), spacing(*this, 1), spacing(*this, 3), spacing(*this, 2));
    layout->setSpacing(spacing(*this, 1.2));
    layout->addWidget(banner_);
    layout->addLayout(head);
    layout->addWidget(state_);
    layout->addWidget(parent_, 0, Qt::AlignLeading);
    fields_ = new QWidget(content);
    form_ = makeForm(content);
    fields_->setLayout(form_);
    layout->addWidget(fields_);
    layout->addWidget(subtasksLabel_);
    layout->addWidget(subtasks_);
    layout->addStretch(1);
    setWidget(content);
    connectChoices();
}

WordsField* TaskPage::addField(QWidget* content, WordsField::Reader reader, Change change) {
    return new WordsField(
        std::move(reader), [this, change](const QString& text) { return edit(change, text); }, content);
}

void TaskPage::makeFields(QWidget* content) {
    banner_ = new MessageLine(content);
    done_ = new DoneBox(content);
    title_ = addField(content, readTitle, takeTitle);
    title_->line().setFont(titleFont(font()));
    describeField(*title_, textKey("Title"), textKey("Title"));
    state_ = new MessageLine(content);
    parent_ = new QPushButton(content);
    parent_->setFlat(true);
    due_ = addField(content, readDue, takeDue);
    describeField(*due_, textKey("Due"), kDueExample);
    repeat_ = addField(content, readRepeat, takeRepeat);
    describeField(*repeat_, textKey("Repeat"), kRepeatExample);
    const auto readAlertOfTask = [this](const QString& text) {
        const GTask* task = TaskActions::taskNamed(taskid_);
        return readAlert(text, task ? task->dueDate() : std::nullopt);
    };
    alert_ = addField(content, readAlertOfTask, takeAlert);
    describeField(*alert_, textKey("Alert"), kAlertExample);
    placeAlert_ = new QLineEdit(content);
    placeAlert_->setReadOnly(true);
    placeAlert_->setFrame(false);
    priority_ = new PriorityChoice(content);
    list_ = new ListChoice(content);
    notes_ = new NotesField([this](const QString& text) { return edit(takeNotes, text); }, content);
    subtasks_ = new SubtaskTree(content);
    subtasksLabel_ = makeFieldLabel(textKey("Subtasks"), subtasks_, content);
}

QFormLayout* TaskPage::makeForm(QWidget* content) {
    const FieldRow rows[] = {
        {textKey("Due"),         due_       },
        {textKey("Repeat"),      repeat_    },
        {textKey("Alert"),       alert_     },
        {textKey("Place alert"), placeAlert_},
        {textKey("Priority"),    priority_  },
        {textKey("List"),        list_      },
        {textKey("Notes"),       notes_     },
    };
    return makeFieldForm(rows, content);
}

void TaskPage::connectChoices() {
    connect(done_, &DoneBox::clicked, this,
            [this](bool isDone) { setCompletion(QString::fromStdString(taskid_), isDone); });
    connect(subtasks_, &SubtaskTree::completionWanted, this, &TaskPage::setCompletion);
    connect(subtasks_, &SubtaskTree::taskWanted, this, &TaskPage::taskWanted);
    connect(priority_, &QComboBox::activated, this, [this] {
        actions_.edit(taskid_, [this](GTask& task) {
            task.setPriority(priority_->priority());
            task.updateLastModified();
        });
    });
    connect(list_, &QComboBox::activated, this, &TaskPage::moveToChosenList);
    connect(parent_, &QPushButton::clicked, this,
            [this] { Q_EMIT taskWanted(parent_->property("taskid").toString()); });
}

// Showing

void TaskPage::showTask(const std::string& taskid) {
    if (taskid != taskid_) {
        finishTyping();
        forgetTyping();
        taskid_ = taskid;
        isShown_ = false;
        verticalScrollBar()->setValue(0);
        done_->setFocus();
    }
    refresh();
}

void TaskPage::refresh() {
    if (taskid_.empty()) return;
    GTask* task = TaskActions::taskNamed(taskid_);
    if (!task) return showMissing();
    isShown_ = true;
    const GList* list = task->list();
    const bool isReadOnly = list && list->isReadonly();
    banner_->showHint(isReadOnly ? translated("The list of this task is read-only.") : QString());
    showFields(*task);
    setReadOnly(isReadOnly);
    subtasks_->show(*task, isReadOnly);
    subtasksLabel_->setVisible(task->hasSubtasks());
}

void TaskPage::showFields(GTask& task) {
    for (QWidget* widget : std::initializer_list<QWidget*>{done_, title_, fields_}) widget->show();
    done_->setChecked(task.completed());
    showWords(task);
    showPlaceAlert(task);
    priority_->showPriority(task.priority());
    list_->showLists(task.list());
    notes_->showStored(storedText(task.notes()));
    showState(task);
    showParent(task);
}

void TaskPage::showWords(const GTask& task) {
    title_->showStored(storedText(task.name()), {});
    due_->showStored(dueToType(task), task.dueDate() ? qtText(dueInWords(task)) : QString());
    repeat_->showStored(repeatText(task), {});
    alert_->showStored(alertToType(task), alertHint(task));
}

void TaskPage::showPlaceAlert(const GTask& task) {
    const std::u16string place = placeAlertInWords(task);
    form_->setRowVisible(placeAlert_, !place.empty());
    placeAlert_->setText(shownLine(place));
    placeAlert_->setCursorPosition(0);
}

void TaskPage::showParent(const GTask& task) {
    const GTask* parent = task.parentTask();
    parent_->setVisible(parent);
    if (!parent) return;
    const QString name = shownLine(parent->name().value_or(std::u16string_view()));
    QString text = translated("Below %@", fontMetrics().elidedText(name, Qt::ElideRight, width() / 2));
    parent_->setText(text.replace(QChar(u'&'), QStringLiteral("&&")));
    parent_->setAccessibleName(translated("Below %@", name));
    const ManagedObjectContext& context = *task.managedObjectContext();
    parent_->setProperty("taskid", QString::fromStdString(context.uriRepresentation(*parent)));
}

void TaskPage::showState(const GTask& task) {
    QString state;
    if (task.completed()) {
        const std::optional<Date> date = task.completedDate();
        state = date ? translated("Done %@", qtText(stringOfDateTime(*date))) : translated("Done");
    }
    state_->showHint(state);
}

// What was typed stays there to be copied.
void TaskPage::showMissing() {
    setReadOnly(true);
    if (isShown_) return banner_->showProblem(translated("This task has been deleted."));
    for (QWidget* widget : std::initializer_list<QWidget*>{done_, title_, state_, parent_, fields_, subtasks_,
                                                           subtasksLabel_}) {
        widget->hide();
    }
    banner_->showProblem(translated("This task is not in the store. It may have been deleted."));
}

void TaskPage::setReadOnly(bool isReadOnly) {
    for (WordsField* field : {title_, due_, repeat_, alert_}) field->setReadOnly(isReadOnly);
    notes_->setReadOnly(isReadOnly);
    for (QWidget* widget : std::initializer_list<QWidget*>{done_, priority_, list_}) {
        widget->setEnabled(!isReadOnly);
    }
}

QString TaskPage::title() const {
    const GTask* task = TaskActions::taskNamed(taskid_);
    return task ? shownLine(task->name().value_or(std::u16string_view())) : QString();
}

// Editing

void TaskPage::finishTyping() {
    if (!TaskActions::taskNamed(taskid_)) return;
    for (WordsField* field : {title_, due_, repeat_, alert_}) field->takeTyped();
    notes_->takeTyped();
}

void TaskPage::forgetTyping() {
    for (WordsField* field : {title_, due_, repeat_, alert_}) field->giveUpTyping();
    notes_->forgetTyping();
}

bool TaskPage::edit(Change change, const QString& text) {
    return actions_.edit(taskid_, [change, &text](GTask& task) { change(task, text); });
}

void TaskPage::setCompletion(const QString& taskid, bool isDone) {
    const std::string name = taskid.toStdString();
    const bool isSaved = isDone ? actions_.complete(name) : actions_.reopen(name);
    if (isSaved) Q_EMIT completed(taskid, isDone);
    refresh();
}

void TaskPage::moveToChosenList() {
    GList* list = list_->chosenList();
    const GTask* task = TaskActions::taskNamed(taskid_);
    if (!list || !task || task->list() == list) return;
    finishTyping();
    GTask* moved = nullptr;
    const bool isSaved = actions_.edit(
        taskid_, [&](GTask& changed) { moved = &moveTask(changed, *list, nullptr, lastRootTask(*list)); });
    // Another list means another task: what was typed and not taken stays with the page.
    if (isSaved) taskid_ = moved->managedObjectContext()->uriRepresentation(*moved);
    refresh();
}

}  // namespace corvane
