#include "widget/WidgetSnapshot.h"

#include <algorithm>

#include "model/GSData.h"
#include "widget/TaskTableViewCell.h"
#include "widget/TodayViewController.h"

namespace corvane {
namespace {

std::optional<std::string> imageName(const ImageView& view) {
    if (view.isHidden || !view.image) return std::nullopt;
    return view.image->name;
}

std::optional<std::u16string> shownText(const Label& label) {
    return label.isHidden ? std::nullopt : label.text;
}

WidgetRow rowOfCell(const TaskTableViewCell& cell) {
    WidgetRow row;
    row.title = shownText(cell.titleLabel);
    row.notes = shownText(cell.notesLabel);
    row.time = shownText(cell.timeLabel);
    row.bullet = imageName(cell.taskBulletImageView);
    row.priority = imageName(cell.priorityView);
    row.color = cell.colorView.backgroundColor;
    row.alert = !cell.alertImageView.isHidden;
    row.repeat = !cell.repeatImageView.isHidden;
    return row;
}

// One cell serves all rows: frames play no part here, so nothing is laid out or measured.
std::vector<WidgetRow> rowsOf(const TodayViewController& controller) {
    const FixedAdvanceMeasuring measuring;
    TaskTableViewCell cell(measuring);
    cell.awakeFromNib();
    const ManagedObjectContext& context = GSData::sharedInstance().viewContext();
    std::vector<WidgetRow> rows(controller.tableView.numberOfRows());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const GTask& task = *controller.todayTasks()[i];
        cell.setTask(task);
        rows[i] = rowOfCell(cell);
        rows[i].taskid = context.uriRepresentation(task);
        rows[i].url = controller.rowUrl(i).value_or(std::u16string());
    }
    return rows;
}

}  // namespace

WidgetRow widgetRow(const GTask& task) {
    const FixedAdvanceMeasuring measuring;
    TaskTableViewCell cell(measuring);
    cell.awakeFromNib();
    cell.setTask(task);
    WidgetRow row = rowOfCell(cell);
    if (const ManagedObjectContext* context = task.managedObjectContext()) {
        row.taskid = context->uriRepresentation(task);
    }
    return row;
}

WidgetSnapshot widgetSnapshot(const TodayViewController& controller) {
    WidgetSnapshot snapshot;
    snapshot.displayMode = controller.extensionContext().widgetActiveDisplayMode();
    snapshot.dueCount = controller.todayTasks().size();
    snapshot.maxTasksInWidget = controller.maxTasksInWidget();
    snapshot.rows = rowsOf(controller);
    snapshot.footer = controller.footerLabel.text;
    if (!controller.showAllButton.isHidden) snapshot.showAllTitle = controller.showAllButton.title;
    snapshot.noTasksHidden = controller.noTasksView.isHidden;
    snapshot.wellDone = controller.wellDoneLabel.text.value_or(std::u16string());
    snapshot.noMoreTasks = controller.noMoreTasksLabel.text.value_or(std::u16string());
    snapshot.preferredContentSize = controller.preferredContentSize();
    snapshot.largestAvailableDisplayMode = controller.extensionContext().widgetLargestAvailableDisplayMode();
    return snapshot;
}

Date validUntil(const TodayViewController& controller) {
    const DueDates& dates = controller.dueDates();
    const auto dueTime = nextDueTime(GSData::sharedInstance().viewContext(), dates);
    return std::min(dates.tomorrow, dueTime.value_or(dates.tomorrow));
}

std::size_t overdueCount(const TodayViewController& controller) {
    return countOverdueTasks(GSData::sharedInstance().viewContext(), controller.dueDates());
}

}  // namespace corvane
