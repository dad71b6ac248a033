#include "widget/TodayViewController.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "model/GSData.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "text/UrlEncoding.h"
#include "widget/SystemVersion.h"
#include "widget/TaskTableViewCell.h"
#include "widget/WidgetImages.h"
#include "widget/WidgetLayout.h"

namespace corvane {
namespace {

constexpr double kButtonCornerRadius = 5;
// The blue is as meant: no multiple of 1/255.
constexpr Color kAddButtonTint = Color::rgb(0.1607843137254902, 0.5372549019607843, 0.9502262443438914);
constexpr Color kTextGrey = Color::white(0.4);

// One or two tasks are all in view and need no count.
constexpr std::int64_t kFewestTasksCounted = 3;

std::u16string localizedCount(const char* key, std::int64_t count) {
    return stringWithFormat(localizedString(key, count), {count});
}

// Rows that are missing when there are more tasks than fit; a negative room counts on top of the tasks.
std::int64_t tasksNotShown(std::int64_t tasks, std::int64_t room) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    return room < tasks - kMost ? kMost : tasks - room;
}

}  // namespace

TodayViewController::TodayViewController(ExtensionContext& extensionContext, const TextMeasuring& measuring)
    : ViewController(extensionContext), measuring_(measuring) {
    addTaskButton.image = kAddTaskImage.image();
    tableView.rowHeight = kRowHeight;
    tableView.registerCellFactory(kTaskCellIdentifier,
                                  [this] { return std::make_unique<TaskTableViewCell>(measuring_); });
}

void TodayViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    tableView.dataSource = this;
    tableView.delegate = this;
    addTaskButton.tintColor = kAddButtonTint;
    if (addTaskButton.image) {
        addTaskButton.image = addTaskButton.image->withRenderingMode(Image::RenderingMode::kTemplate);
    }
    showAllButton.cornerRadius = kButtonCornerRadius;
    wellDoneLabel.text = localizedString("Well done!");
    noMoreTasksLabel.text = localizedString("No more tasks for today.");
    if (!iOS10()) return;
    for (Label* label : {&footerLabel, &wellDoneLabel, &noMoreTasksLabel}) label->textColor = kTextGrey;
}

void TodayViewController::widgetPerformUpdate(const std::function<void(UpdateResult)>& completionHandler) {
    GSData& data = GSData::sharedInstance();
    data.launch();
    maxTasksInWidget_ = rowsThatFit(availableHeight());
    dueDates_ = DueDates::ofThisMoment();
    todayTasks_ = data.viewContext().fetch<GTask>(requestForDueTasks(dueDates_, maxTasksInWidget_));
    showCounts();
    tableView.reloadData();
    updateSize();
    if (completionHandler) completionHandler(UpdateResult::kNewData);
}

double TodayViewController::availableHeight() const {
    if (iOS10()) return extensionContext().widgetMaximumSizeForDisplayMode(DisplayMode::kExpanded).height;
    const Environment& environment = Environment::current();
    const bool isPhone = environment.device.userInterfaceIdiom == UserInterfaceIdiom::kPhone;
    return environment.screen.bounds.height - (isPhone ? kOlderPhoneAllowance : kOlderPadAllowance);
}

void TodayViewController::showCounts() {
    const auto count = static_cast<std::int64_t>(todayTasks_.size());
    noTasksView.isHidden = count >= 1;
    footerLabel.text.reset();
    if (count >= kFewestTasksCounted) {
        footerLabel.text = localizedCount(textKey("You have %d tasks due today"), count);
    }
    showAllButton.isHidden = count <= maxTasksInWidget_;
    if (showAllButton.isHidden) return;
    showAllButton.title = localizedCount(textKey("View More (%d)"), tasksNotShown(count, maxTasksInWidget_));
}

void TodayViewController::updateSize() {
    if (!iOS10()) {
        setPreferredContentSize({0, calcHeight()});
        return;
    }
    const DisplayMode mode = extensionContext().widgetActiveDisplayMode();
    widgetActiveDisplayModeDidChange(mode, extensionContext().widgetMaximumSizeForDisplayMode(mode));
}

// Compared unsigned: a negative maximum counts as very large, and every task gets a row.
std::size_t TodayViewController::numberOfRowsInSection(const TableView&, std::size_t) const {
    return std::min(todayTasks_.size(), static_cast<std::size_t>(maxTasksInWidget_));
}

TableViewCell& TodayViewController::cellForRowAtIndexPath(TableView& table, IndexPath indexPath) {
    auto& cell = static_cast<TaskTableViewCell&>(table.dequeueReusableCell(kTaskCellIdentifier, indexPath));
    cell.setTask(*todayTasks_[indexPath.row]);
    return cell;
}

void TodayViewController::didSelectRowAtIndexPath(TableView& table, IndexPath indexPath) {
    constexpr bool kAnimated = true;
    table.deselectRow(indexPath, kAnimated);
    if (const auto url = rowUrl(indexPath.row)) extensionContext().openUrl(*url);
}

double TodayViewController::calcHeight() const {
    constexpr std::size_t kOnlySection = 0;
    const std::size_t rows = numberOfRowsInSection(tableView, kOnlySection);
    double height = kEmptyWidgetHeight;
    if (rows >= 1) {
        height = kRowHeight * static_cast<double>(rows) + kTopMargin;
        if (footerLabel.text) height += kFooterHeight;
        if (!showAllButton.isHidden) height += kShowAllHeight;
        height += kBottomMargin;
    }
    return std::max(height, kMinimumHeight);
}

EdgeInsets TodayViewController::widgetMarginInsetsForProposedMarginInsets(EdgeInsets proposed) const {
    return {proposed.top, kLeftMargin, 0, proposed.right};
}

void TodayViewController::widgetActiveDisplayModeDidChange(DisplayMode activeDisplayMode,
                                                           Size withMaximumSize) {
    const double height = calcHeight();
    DisplayMode largest = DisplayMode::kExpanded;
    if (activeDisplayMode == DisplayMode::kCompact) {
        setPreferredContentSize(withMaximumSize);
        if (!(height > withMaximumSize.height)) largest = DisplayMode::kCompact;
    } else {
        setPreferredContentSize({withMaximumSize.width, std::min(height, withMaximumSize.height)});
    }
    extensionContext().setWidgetLargestAvailableDisplayMode(largest);
}

std::u16string TodayViewController::scheme() const { return u"velmor-plorixmax"; }

std::u16string TodayViewController::addTaskUrl() const {
    return stringWithFormat(u"%@://localhost/addtask", {scheme()});
}

std::u16string TodayViewController::todayUrl() const {
    return stringWithFormat(u"%@://localhost/today", {scheme()});
}

std::optional<std::u16string> TodayViewController::rowUrl(std::size_t row) const {
    if (row >= todayTasks_.size()) return std::nullopt;
    const std::string uri = GSData::sharedInstance().viewContext().uriRepresentation(*todayTasks_[row]);
    return stringWithFormat(u"%@://localhost/today?taskid=%@",
                            {scheme(), stringByURLEncodingStringParameter(textFromUtf8(uri))});
}

void TodayViewController::addTaskClicked() { extensionContext().openUrl(addTaskUrl()); }

void TodayViewController::noTasksClicked() { extensionContext().openUrl(todayUrl()); }

void TodayViewController::showAllClicked() { extensionContext().openUrl(todayUrl()); }

}  // namespace corvane
