#include "apps/corvane-today/WidgetWindow.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QFontMetricsF>
#include <QResizeEvent>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/host/ProgramStore.h"
#include "dates/DateTexts.h"
#include "model/GSData.h"
#include "model/GTask.h"
#include "platform/foundation/Environment.h"
#include "widget/TaskTableViewCell.h"
#include "widget/WidgetLayout.h"

namespace corvane {
namespace {

constexpr EdgeInsets kProposedInsets{0, 12, 0, 12};
constexpr double kMessageHeight = 26;  // of one line
constexpr int kMostMessageLines = 3;
// What words that do not fit any more leave free of a line.
constexpr double kMessageShare = 0.9;
constexpr double kFooterInset = 13;
constexpr double kShowAllInset = 2;
constexpr Size kSmallestContent{240, kMinimumHeight};
// A window that the user drags at is left alone until it rests.
constexpr std::chrono::milliseconds kSettlingTime{400};

// The row of a completed task and that of its next occurrence stand beside each other.
std::string keyOf(const std::string& taskid, RowAct act) {
    return act == RowAct::kNone ? taskid : taskid + " " + std::to_string(static_cast<int>(act));
}

QLabel* plainLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

void setTextColor(QWidget& widget, const QColor& color) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, color);
    widget.setPalette(palette);
}

}  // namespace

/// Height that fills from the top; what does not fit whole is out of sight, and all below it.
class WidgetWindow::Room {
  public:
    Room(double top, double end) : next_(top), end_(end) {}

    /// The top of a piece of this height; none when there is no room left for it.
    std::optional<int> take(double height) {
        constexpr double kRounding = 0.75;
        if (isFull_ || next_ + height > end_ + kRounding) {
            isFull_ = true;
            return std::nullopt;
        }
        return qRound(std::exchange(next_, next_ + height));
    }

  private:
    double next_;
    double end_;
    bool isFull_ = false;
};

WidgetWindow::WidgetWindow(WidgetHost& host, QtTextMeasuring& measuring, TaskActions& actions)
    : host_(host),
      measuring_(measuring),
      actions_(actions),
      look_{measuring},
      header_(new WindowHeader(look_, this)),
      list_(new TaskList(this)),
      emptyView_(new EmptyView(look_, this)),
      footer_(plainLabel(this)),
      showAllButton_(new ShowAllButton(look_, this)),
      message_(plainLabel(this)) {
    installRowAccessibility();
    host.controller().tableView.registerCellFactory(TodayViewController::kTaskCellIdentifier, [this] {
        auto cell = std::make_unique<TaskTableViewCell>(measuring_);
        placeOutlets(*cell, measuring_);
        return cell;
    });
    setWindowTitle(translated("Corvane Today"));
    setFocus();  // else the first button had it, and took the rows' keys
    list_->setAccessibleName(translated("Tasks due today"));
    settling_.setSingleShot(true);
    settling_.setInterval(kSettlingTime);
    message_->setWordWrap(true);
    connectParts();
    setColors(look_.palette);
}

WidgetWindow::~WidgetWindow() = default;

void WidgetWindow::connectParts() {
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) button->installEventFilter(this);
    connect(header_, &WindowHeader::addWanted, this, &WidgetWindow::addTask);
    connect(header_, &WindowHeader::modeWanted, this, &WidgetWindow::toggleMode);
    connect(header_, &WindowHeader::menuWanted, this, &WidgetWindow::showMenu);
    connect(emptyView_, &QAbstractButton::clicked, this, [this] { host_.controller().noTasksClicked(); });
    connect(showAllButton_, &QAbstractButton::clicked, this, &WidgetWindow::showAll);
    connect(&acts_, &RecentActs::ended, this, &WidgetWindow::showRefresh);
    connect(&settling_, &QTimer::timeout, this, [this] {
        if (std::exchange(isUserSizing_, false)) takeUserSize();
        Q_EMIT arrangementChanged();
    });
}

void WidgetWindow::setPrivate(bool isPrivate) {
    if (look_.isPrivate == isPrivate) return;
    look_.isPrivate = isPrivate;
    showRefresh();
    Q_EMIT privacyChanged(isPrivate);
}

void WidgetWindow::setPreview(bool isPreview) {
    isPreview_ = isPreview;
    header_->setNotice(isPreview ? translated("Preview of tomorrow") : QString());
}

void WidgetWindow::describe(const QString& sentence) {
    if (accessibleDescription() != sentence) setAccessibleDescription(sentence);
}

void WidgetWindow::setColors(const WidgetPalette& palette) {
    look_.palette = palette;
    setPalette(palette.qtPalette());
    updateLook();
}

void WidgetWindow::updateLook() {
    footer_->setFont(look_.fonts().qtFont(look_.fonts().details()));
    message_->setFont(look_.fonts().qtFont(look_.fonts().details()));
    setTextColor(*footer_,
                 look_.palette.readable(host_.controller().footerLabel.textColor, look_.palette.quietText()));
    updateMessageColor();
    const Qt::Alignment side = layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    for (QLabel* label : {footer_, message_})
        label->setAlignment(side | Qt::AlignAbsolute | Qt::AlignVCenter);
    setMinimumSize(look_.wholePixels(kSmallestContent.width),
                   look_.wholePixels(kSmallestContent.height + WindowHeader::kHeight));
    header_->updateLook();
    for (const auto& [key, row] : rows_) row->updateLook();
    update();
}

// What there is to show

void WidgetWindow::showRefresh() {
    const TodayViewController& controller = host_.controller();
    host_.controller().tableView.frame.width = contentWidth() / look_.pixels(1);
    showRows(items());
    emptyView_->setHidden(controller.noTasksView.isHidden);
    if (!emptyView_->isHidden()) emptyView_->show(controller.wellDoneLabel, controller.noMoreTasksLabel);
    footer_->setText(shownLine(controller.footerLabel.text.value_or(std::u16string())));
    showAllButton_->show(controller.showAllButton);
    header_->show(qtText(stringOfDate(controller.dueDates().now)), controller.addTaskButton,
                  host_.widgetActiveDisplayMode(),
                  host_.widgetLargestAvailableDisplayMode() == DisplayMode::kExpanded);
    showStoreMessage();
}

void WidgetWindow::showStoreMessage() {
    const auto problem = host_.problem();
    if (isStoreMissing(GSData::sharedInstance())) {
        if (!hasHadStore_) {
            return setMessage(translated("There is no task yet. Add one to begin."),
                              MessageKind::kInvitation);
        }
        const auto folder = Environment::current().containerDirectory.value_or(std::filesystem::path());
        return showMessage(translated("The task store is gone: %@", QString::fromStdString(folder.string())));
    }
    hasHadStore_ = hasHadStore_ || !problem;
    showMessage(problem ? translated("The task store could not be read: %@", QString::fromStdString(*problem))
                        : QString());
}

void WidgetWindow::showMessage(const QString& message) { setMessage(message, MessageKind::kProblem); }

void WidgetWindow::setMessage(const QString& message, MessageKind kind) {
    messageKind_ = kind;
    message_->setToolTip(message.isEmpty() ? QString() : shownToolTip(coreText(message), {}));
    message_->setAccessibleName(message);
    updateMessageColor();
    followContent();
}

void WidgetWindow::updateMessageColor() {
    const bool isProblem = messageKind_ == MessageKind::kProblem;
    setTextColor(*message_,
                 isProblem ? look_.palette.readable(Color::systemRed()) : look_.palette.quietText());
}

void WidgetWindow::setReminderText(std::function<QString(const std::string& taskid)> text) {
    reminderText_ = std::move(text);
}

RowContent WidgetWindow::contentOf(std::size_t row) {
    constexpr std::size_t kOnlySection = 0;
    TodayViewController& controller = host_.controller();
    auto& cell = static_cast<TaskTableViewCell&>(controller.tableView.cellForRow({kOnlySection, row}));
    if (cell.titleLabel.font != measuring_.fonts().title()) {
        placeOutlets(cell, measuring_);  // made before the desktop's font changed
        cell.layoutIfNeeded();
    }
    RowContent content = contentOfRow(cell, host_.snapshot().rows[row], *controller.todayTasks()[row]);
    if (reminderText_) setReminder(content, reminderText_(content.taskid), measuring_);
    return content;
}

std::vector<WidgetWindow::Item> WidgetWindow::items() {
    std::vector<Item> items;
    const std::size_t count = host_.controller().tableView.numberOfRows();
    items.reserve(count + acts_.acts().size());
    for (std::size_t row = 0; row < count; ++row) items.push_back({contentOf(row), RowAct::kNone});
    for (const RecentAct& recent : acts_.acts()) {
        const auto place = static_cast<std::ptrdiff_t>(std::min(recent.place, items.size()));
        items.insert(items.begin() + place, {recent.content, recent.act});
    }
    return items;
}

// Rows keep their widgets as long as their tasks are shown, so that the focus stays where it is.
void WidgetWindow::showRows(const std::vector<Item>& items) {
    const TaskRow* focused = focusedRow();
    const std::size_t focusedIndex = focused ? indexOf(focused) : 0;
    std::map<std::string, TaskRow*> before = std::exchange(rows_, {});
    shownRows_.clear();
    RowPosition position{0, static_cast<int>(items.size())};
    for (const Item& item : items) {
        ++position.number;
        const std::string key = keyOf(item.content.taskid, item.act);
        const auto known = before.extract(key);
        TaskRow* row = known ? known.mapped() : makeRow();
        row->present(item.content, item.act, position);
        rows_.emplace(key, row);
        shownRows_.push_back(row);
    }
    const bool hasFocusGone = focused && std::ranges::find(shownRows_, focused) == shownRows_.end();
    if (hasFocusGone) focusRow(focusedIndex);
    for (const auto& [key, row] : before) {
        row->hide();
        row->deleteLater();  // it may be telling of the very act that ends it
    }
    updateTabOrder();
}

TaskRow* WidgetWindow::makeRow() {
    auto* row = new TaskRow(look_, list_);
    connect(row, &TaskRow::openWanted, this, [this, row] { openRow(*row); });
    connect(row, &TaskRow::completionWanted, this, [this, row] { act(*row, RowAct::kCompleted); });
    connect(row, &TaskRow::moveWanted, this, [this, row] { act(*row, RowAct::kMovedToTomorrow); });
    connect(
        row, &TaskRow::undoWanted, this, [this, row] { takeBack(std::string(row->taskid())); },
        Qt::QueuedConnection);
    connect(row, &TaskRow::menuWanted, this,
            [this, row](const QPoint& globalPlace) { showRowMenu(*row, globalPlace); });
    return row;
}

void WidgetWindow::updateTabOrder() {
    QWidget* previous = header_;
    for (TaskRow* row : shownRows_) {
        setTabOrder(previous, row);
        previous = row;
    }
    setTabOrder(previous, emptyView_);
    setTabOrder(emptyView_, showAllButton_);
}

std::vector<TaskRow*> WidgetWindow::rows() const {
    std::vector<TaskRow*> visible = shownRows_;
    std::erase_if(visible, [](const TaskRow* row) { return row->isHidden(); });
    return visible;
}

// Layout

double WidgetWindow::contentWidth() const {
    const EdgeInsets insets = host_.controller().widgetMarginInsetsForProposedMarginInsets(kProposedInsets);
    const double wanted = look_.pixels(host_.controller().preferredContentSize().width);
    return (wantedSize_.isEmpty() ? wanted : width()) - look_.pixels(insets.left + insets.right);
}

QSize WidgetWindow::wantedSize() const {
    const Size content = host_.controller().preferredContentSize();
    double height = WindowHeader::kHeight + content.height + messageHeight() / look_.pixels(1);
    if (host_.widgetActiveDisplayMode() == DisplayMode::kExpanded) {
        height += kRowHeight * static_cast<double>(acts_.acts().size());
    }
    return {look_.wholePixels(content.width), qCeil(look_.pixels(height))};
}

int WidgetWindow::messageWidth() const { return width() - 2 * look_.wholePixels(kLeftMargin + kFooterInset); }

double WidgetWindow::messageHeight() const {
    if (message_->accessibleName().isEmpty()) return 0;
    const QFontMetricsF metrics(message_->font());
    const QRectF place(0, 0, messageWidth(), QWIDGETSIZE_MAX);
    const double height = metrics.boundingRect(place, Qt::TextWordWrap, message_->accessibleName()).height();
    const int lines = std::clamp(qRound(height / metrics.lineSpacing()), 1, kMostMessageLines);
    return look_.pixels(kMessageHeight) + (lines - 1) * metrics.lineSpacing();
}

void WidgetWindow::followContent() {
    const QSize wanted = wantedSize();
    if (wanted != std::exchange(wantedSize_, wanted) && !isMaximized() && !isFullScreen()) resize(wanted);
    layoutViews();
}

void WidgetWindow::layoutViews() {
    const double header = look_.pixels(WindowHeader::kHeight);
    double end = height();
    message_->setVisible(!message_->accessibleName().isEmpty());
    if (!message_->isHidden()) {
        end -= messageHeight();
        message_->setGeometry((width() - messageWidth()) / 2, qRound(end), messageWidth(),
                              qCeil(messageHeight()));
        message_->setText(QFontMetricsF(message_->font())
                              .elidedText(message_->accessibleName(), Qt::ElideRight,
                                          kMessageShare * kMostMessageLines * messageWidth()));
    }
    header_->setGeometry(0, 0, width(), qRound(header));
    Room room(header, end);
    layoutRows(room);
    layoutBelowRows(room);
}

void WidgetWindow::layoutRows(Room& room) {
    const EdgeInsets insets = host_.controller().widgetMarginInsetsForProposedMarginInsets(kProposedInsets);
    const int top = room.take(look_.pixels(kTopMargin)).value_or(0);
    const int width = qRound(contentWidth());
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    const int x = look_.wholePixels(isRightToLeft ? insets.right : insets.left);
    int end = top;
    for (TaskRow* row : shownRows_) {
        const auto place = room.take(look_.pixels(kRowHeight));
        row->setVisible(place.has_value());
        if (!place) continue;
        end = *place + look_.wholePixels(kRowHeight);
        row->setGeometry(0, *place - top, width, look_.wholePixels(kRowHeight));
    }
    list_->setGeometry(x, top, width, end - top);
}

void WidgetWindow::layoutBelowRows(Room& room) {
    const auto place = [&](QWidget& widget, bool isShown, double height, double inset) {
        const auto y = isShown ? room.take(look_.pixels(height)) : std::nullopt;
        widget.setVisible(y.has_value());
        if (!y) return;
        const int x = look_.wholePixels(inset);
        widget.setGeometry(x, *y, width() - 2 * x, look_.wholePixels(height));
    };
    const TodayViewController& controller = host_.controller();
    place(*emptyView_, !controller.noTasksView.isHidden, kEmptyWidgetHeight - 2 * kTopMargin, kLeftMargin);
    place(*footer_, controller.footerLabel.text.has_value(), kFooterHeight, kLeftMargin + kFooterInset);
    place(*showAllButton_, !controller.showAllButton.isHidden, kShowAllHeight, kLeftMargin + kShowAllInset);
}

void WidgetWindow::resizeEvent(QResizeEvent* event) {
    if (event->spontaneous() && size() != wantedSize_) {
        isUserSizing_ = true;
        settling_.start();
    }
    if (event->size().width() != event->oldSize().width() && !wantedSize_.isEmpty()) showRefresh();
    layoutViews();
}

// The user decides about the width in both modes, and how high the expanded widget may become.
void WidgetWindow::takeUserSize() {
    const double scale = look_.pixels(1);
    Size compact = host_.widgetMaximumSizeForDisplayMode(DisplayMode::kCompact);
    Size expanded = host_.widgetMaximumSizeForDisplayMode(DisplayMode::kExpanded);
    if (width() != wantedSize_.width()) compact.width = expanded.width = width() / scale;
    const bool isExpanded = host_.widgetActiveDisplayMode() == DisplayMode::kExpanded;
    if (isExpanded && height() != wantedSize_.height()) {
        expanded.height = height() / scale - WindowHeader::kHeight;
    }
    host_.setMaximumSizes(compact, expanded);
    Q_EMIT refreshWanted();
}

void WidgetWindow::moveEvent(QMoveEvent*) { settling_.start(); }

void WidgetWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    Q_EMIT closeWanted();
}

void WidgetWindow::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    Q_EMIT painted();
}

void WidgetWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        measuring_.setFonts(WidgetFonts(QApplication::font()));
        updateLook();
        if (!wantedSize_.isEmpty()) showRefresh();
    }
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && isPreview_) {
        Q_EMIT previewWanted(false);
    }
}

}  // namespace corvane
