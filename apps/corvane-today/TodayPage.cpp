#include "apps/corvane-today/TodayPage.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/TaskRowDelegate.h"
#include "apps/host/ProgramStore.h"
#include "apps/host/TaskSearch.h"
#include "model/GSData.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

// More rows than a window shows at once: a page of them comes with one statement.
constexpr std::size_t kRowsAtOnce = 100;

std::variant<std::vector<GTask*>, StoreError> fetchTasks(const TaskSelection& selection) {
    ManagedObjectContext& context = GSData::sharedInstance().viewContext();
    FetchRequest request = requestForTasks(selection, context);
    request.fetchBatchSize = kRowsAtOnce;
    auto result = context.executeFetch(request);
    if (auto* error = std::get_if<StoreError>(&result)) return std::move(*error);
    std::vector<GTask*> tasks;
    for (ManagedObject* object : std::get<std::vector<ManagedObject*>>(result)) {
        tasks.push_back(static_cast<GTask*>(object));
    }
    return tasks;
}

}  // namespace

TodayPage::TodayPage(TaskActions& actions, QWidget* parent) : QWidget(parent), actions_(actions) {
    filters_ = new FilterList(this);
    search_ = new QLineEdit(this);
    search_->setPlaceholderText(translated("Search, or a predicate like priority >= 40"));
    search_->setAccessibleName(translated("Search"));
    search_->setClearButtonEnabled(true);
    search_->installEventFilter(this);
    account_ = new AccountChoice(this);
    showsDone_ = new QCheckBox(translated("Show done tasks"), this);
    problem_ = new MessageLine(this);
    empty_ = plainLabel({}, this);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    empty_->setForegroundRole(QPalette::PlaceholderText);
    makeList();
    makeLayout();
    searchDelay_.setSingleShot(true);
    searchDelay_.setInterval(std::chrono::milliseconds(120));
    searchRest_.setSingleShot(true);
    searchRest_.setInterval(std::chrono::milliseconds(1500));
    lingeringEnd_.setSingleShot(true);
    lingeringEnd_.setInterval(std::chrono::seconds(8));
    connect(search_, &QLineEdit::textChanged, &searchDelay_, qOverload<>(&QTimer::start));
    connect(search_, &QLineEdit::textChanged, &searchRest_, qOverload<>(&QTimer::start));
    connect(search_, &QLineEdit::returnPressed, &searchRest_, &QTimer::stop);
    connect(search_, &QLineEdit::returnPressed, this, &TodayPage::refresh);
    connect(&searchDelay_, &QTimer::timeout, this, &TodayPage::startAnew);
    connect(&searchRest_, &QTimer::timeout, this, &TodayPage::refresh);
    connect(account_, &QComboBox::currentIndexChanged, this, &TodayPage::startAnew);
    connect(filters_, &QListWidget::currentRowChanged, this, &TodayPage::startAnew);
    connect(showsDone_, &QCheckBox::toggled, this, &TodayPage::startAnew);
    connect(&lingeringEnd_, &QTimer::timeout, this, [this] {
        lingering_.reset();
        refresh();
    });
}

void TodayPage::makeList() {
    model_ = new TaskListModel(this);
    list_ = new QListView(this);
    list_->setObjectName(QStringLiteral("tasks"));
    list_->setModel(model_);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setUniformItemSizes(true);
    list_->setMouseTracking(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setAccessibleName(translated("Tasks"));
    list_->installEventFilter(this);
    auto* delegate = new TaskRowDelegate(list_);
    list_->setItemDelegate(delegate);
    connect(delegate, &TaskRowDelegate::boxClicked, this, &TodayPage::toggle);
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) currentTaskid_ = model_->taskid(current);
            });
    connect(list_, &QListView::doubleClicked, this, &TodayPage::open);
}

void TodayPage::makeLayout() {
    auto* right = new QVBoxLayout;
    auto* head = new QHBoxLayout;
    head->addWidget(search_, 1);
    head->addWidget(account_);
    head->addWidget(showsDone_);
    right->addLayout(head);
    right->addWidget(problem_);
    right->addWidget(list_, 1);
    right->addWidget(empty_, 1);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(spacing(*this, 1.5), 0, spacing(*this, 1.5), spacing(*this, 1));
    layout->setSpacing(spacing(*this, 2));
    filters_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    layout->addWidget(filters_);
    layout->addLayout(right, 1);
    setTabOrder(search_, account_);
    setTabOrder(account_, showsDone_);
    setTabOrder(showsDone_, list_);
    setTabOrder(list_, filters_);
}

void TodayPage::showToday() {
    {
        const QSignalBlocker searchBlocker(search_);
        const QSignalBlocker accountBlocker(account_);
        const QSignalBlocker filterBlocker(filters_);
        search_->clear();
        account_->chooseAll();
        filters_->choose(kTodayFilter);
    }
    startAnew();
    (list_->isHidden() ? static_cast<QWidget*>(search_) : list_)->setFocus();
    if (!list_->currentIndex().isValid()) list_->setCurrentIndex(model_->index(0));
}

void TodayPage::focusSearch() {
    search_->setFocus();
    search_->selectAll();
}

void TodayPage::startAnew() {
    lingering_.reset();
    refresh();
    list_->scrollToTop();
}

void TodayPage::refresh() {
    searchDelay_.stop();
    // Objects may go with a refresh, so that a page that nobody sees keeps none.
    if (!isVisible()) return model_->setTasks({});
    account_->showAccounts();
    showFound(findTasks());
    filters_->countTasks([this] { return selection(); });
}

// What was not kept up to date while it was hidden.
void TodayPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

TaskSelection TodayPage::selection() const {
    TaskSelection selection;
    selection.filter = filters_->filter();
    selection.account = account_->chosenAccount();
    selection.everyAccount = !selection.account;
    selection.hideCompleted = !showsDone_->isChecked();
    return selection;
}

TodayPage::Found TodayPage::findTasks() const {
    if (const std::optional<std::string> problem = storeProblem(GSData::sharedInstance())) {
        return {{}, QString::fromStdString(*problem), {}};
    }
    const std::u16string text = coreText(search_->text());
    const std::optional<TaskSearch> search = taskSearchFromText(text);
    TaskSelection wanted = selection();
    if (search) wanted.where = search->condition;
    Found found;
    if (search && search->problem) found.hint = qtText(*search->problem);
    auto result = fetchTasks(wanted);
    if (const auto* error = std::get_if<StoreError>(&result)) {
        const QString reason = QString::fromStdString(error->message);
        if (!search || !search->isPredicate) return {{}, reason, {}};
        found.hint = reason;
        // A predicate may ask for what a task does not have; it is then no more than a text.
        wanted.where = tasksContaining(text);
        result = fetchTasks(wanted);
    }
    if (auto* tasks = std::get_if<std::vector<GTask*>>(&result)) found.tasks = std::move(*tasks);
    return found;
}

void TodayPage::addLingering(std::vector<GTask*>& tasks) const {
    if (!lingering_) return;
    GTask* task = TaskActions::taskNamed(lingering_->taskid);
    if (!task || std::ranges::find(tasks, task) != tasks.end()) return;
    const auto place = static_cast<std::ptrdiff_t>(std::min(lingering_->place, tasks.size()));
    tasks.insert(tasks.begin() + place, task);
}

void TodayPage::showFound(Found found) {
    const std::string taskid = currentTaskid_;
    const int row = std::max(list_->currentIndex().row(), 0);
    addLingering(found.tasks);
    const bool isSearch = !search_->text().trimmed().isEmpty();
    empty_->setText(isSearch ? translated("No task fits the search.") : translated("No tasks."));
    empty_->setVisible(found.tasks.empty());
    list_->setVisible(!found.tasks.empty());
    showMessage(found);
    model_->setTasks(std::move(found.tasks));
    if (list_->currentIndex().isValid() || model_->rowCount() == 0) return;
    const QModelIndex same = taskid.empty() ? QModelIndex() : model_->indexOf(taskid);
    list_->setCurrentIndex(same.isValid() ? same : model_->index(std::min(row, model_->rowCount() - 1)));
}

// What may become a predicate with the next key is no mistake yet.
void TodayPage::showMessage(const Found& found) {
    if (!found.problem.isEmpty()) return problem_->showProblem(found.problem);
    if (searchRest_.isActive()) return problem_->showHint(found.hint);
    problem_->showProblem(found.hint);
}

void TodayPage::toggle(const QModelIndex& index) {
    if (!index.isValid()) return;
    const TaskListRow row = model_->row(index);
    const std::string taskid = row.widget.taskid;
    lingering_ = Lingering{taskid, static_cast<std::size_t>(index.row())};
    lingeringEnd_.start();
    const bool isSaved = row.isDone ? actions_.reopen(taskid) : actions_.complete(taskid);
    if (!isSaved) return;
    // The next one is at hand, as after ticking a line on paper.
    const QModelIndex next = model_->index(model_->indexOf(taskid).row() + 1);
    if (!row.isDone && next.isValid()) list_->setCurrentIndex(next);
    Q_EMIT completed(QString::fromStdString(taskid), !row.isDone);
}

void TodayPage::open(const QModelIndex& index) {
    if (index.isValid()) Q_EMIT taskWanted(QString::fromStdString(model_->taskid(index)));
}

bool TodayPage::eventFilter(QObject* watched, QEvent* event) {
    const bool isOverride = event->type() == QEvent::ShortcutOverride;
    if (!isOverride && event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    // The first Escape leaves the search, before another one leaves the window.
    if (watched == search_ && key == Qt::Key_Escape && !search_->text().isEmpty()) {
        event->accept();
        if (!isOverride) search_->clear();
        return true;
    }
    if (isOverride) return QWidget::eventFilter(watched, event);
    if (watched == list_ && key == Qt::Key_Space) {
        toggle(list_->currentIndex());
        return true;
    }
    if (watched == list_ && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        open(list_->currentIndex());
        return true;
    }
    if (watched == search_ && key == Qt::Key_Down) {
        list_->setFocus();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace corvane
