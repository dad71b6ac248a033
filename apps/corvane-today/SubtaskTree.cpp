#include "apps/corvane-today/SubtaskTree.h"

#include <algorithm>

#include <QHeaderView>
#include <QSet>
#include <QTreeWidgetItemIterator>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "model/GTask.h"
#include "model/TaskTree.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

constexpr int kTaskidRole = Qt::UserRole;

QString taskidOf(const QTreeWidgetItem& item) { return item.data(0, kTaskidRole).toString(); }

}  // namespace

SubtaskTree::SubtaskTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setFrameShape(QFrame::NoFrame);
    setTabKeyNavigation(false);
    setUniformRowHeights(true);
    setAccessibleName(translated("Subtasks"));
    connect(this, &QTreeWidget::itemChanged, this, &SubtaskTree::askForCompletion);
    connect(this, &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem* item) { Q_EMIT taskWanted(taskidOf(*item)); });
}

std::vector<SubtaskTree::Entry> SubtaskTree::entriesBelow(GTask& task) {
    const ManagedObjectContext& context = *task.managedObjectContext();
    std::vector<Entry> entries;
    for (const TaskInTree& entry : liveTree(task)) {
        const std::u16string_view name = entry.task->name().value_or(std::u16string_view());
        entries.push_back({QString::fromStdString(context.uriRepresentation(*entry.task)),
                           name.empty() ? translated("untitled") : shownLine(name), entry.parent,
                           entry.task->completed()});
    }
    return entries;
}

// The items are made anew when the act is done, which cannot be while one of them tells of its change. A box
// whose act fails shows the stored state again.
void SubtaskTree::askForCompletion(const QTreeWidgetItem* item) {
    if (isBuilding_) return;
    isStale_ = true;
    const bool isDone = item->checkState(0) == Qt::Checked;
    QMetaObject::invokeMethod(
        this, [this, taskid = taskidOf(*item), isDone] { Q_EMIT completionWanted(taskid, isDone); },
        Qt::QueuedConnection);
}

void SubtaskTree::show(GTask& task, bool isReadOnly) {
    std::vector<Entry> entries = entriesBelow(task);
    setVisible(entries.size() > 1);
    if (entries == entries_ && isReadOnly == isReadOnly_ && !isStale_) return;
    entries_ = std::move(entries);
    isReadOnly_ = isReadOnly;
    isStale_ = false;
    build(isReadOnly);
    updateGeometry();
}

void SubtaskTree::build(bool isReadOnly) {
    isBuilding_ = true;
    QSet<QString> folded;
    for (QTreeWidgetItemIterator item(this); *item; ++item) {
        if ((*item)->childCount() > 0 && !(*item)->isExpanded()) folded.insert(taskidOf(**item));
    }
    const QString current = currentItem() ? taskidOf(*currentItem()) : QString();
    clear();
    std::vector<QTreeWidgetItem*> items(entries_.size(), nullptr);
    for (std::size_t i = 1; i < entries_.size(); ++i) {
        const Entry& entry = entries_[i];
        QTreeWidgetItem* parent = items[entry.parent];
        items[i] = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
        items[i]->setText(0, entry.name);
        items[i]->setData(0, kTaskidRole, entry.taskid);
        items[i]->setCheckState(0, entry.isDone ? Qt::Checked : Qt::Unchecked);
        if (isReadOnly) items[i]->setFlags(items[i]->flags() & ~Qt::ItemIsUserCheckable);
        QFont font = this->font();
        font.setStrikeOut(entry.isDone);
        items[i]->setFont(0, font);
    }
    for (QTreeWidgetItemIterator item(this); *item; ++item) {
        (*item)->setExpanded(!folded.contains(taskidOf(**item)));
        if (taskidOf(**item) == current) setCurrentItem(*item);
    }
    isBuilding_ = false;
}

QSize SubtaskTree::sizeHint() const {
    constexpr int kMostRows = 8;
    const int rows = std::clamp(static_cast<int>(entries_.size()) - 1, 1, kMostRows);
    const int rowHeight = std::max(sizeHintForRow(0), fontMetrics().lineSpacing());
    return {fontMetrics().averageCharWidth() * 30, rows * rowHeight + 4};
}

}  // namespace corvane
