#include "apps/corvane-today/RowContent.h"

#include <algorithm>

#include <QStringList>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/host/Sentence.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "widget/WidgetLayout.h"

namespace corvane {
namespace {

constexpr double kGapBetweenLines = 1;
constexpr double kStripInset = 6;
constexpr double kStripWidth = 4;
constexpr double kBulletX = 13;
constexpr double kGapBeforePriority = 3;
constexpr double kGapAfterPiece = 5;

void center(View& view, double middle) { view.frame.y = middle - view.frame.height / 2; }

void place(Label& label, const Font& font, double y, double height) {
    label.font = font;
    label.frame.y = y;
    label.frame.height = height;
}

QString spokenText(const WidgetRow& row, const GTask& task) {
    QStringList words{shownLine(row.title.value_or(std::u16string()))};
    if (const auto priority = priorityInWords(row.priority)) words << qtText(*priority);
    if (row.time) words << qtText(*row.time);
    if (row.repeat) words << translated("repeats");
    if (row.alert) words << translated("with an alert");
    const GList* list = task.list();
    if (list && list->name()) words << translated("list %@", shownLine(*list->name()));
    return words.join(translated(", "));
}

}  // namespace

void placeOutlets(TaskTableViewCell& cell, const QtTextMeasuring& measuring) {
    const Font titleFont = measuring.fonts().title();
    const Font detailsFont = measuring.fonts().details();
    const double title = measuring.sizeOfText(u"X", titleFont).height;
    const double details = measuring.sizeOfText(u"X", detailsFont).height;
    const double top = (kRowHeight - title - details - kGapBetweenLines) / 2;
    const double second = top + title + kGapBetweenLines;
    place(cell.titleLabel, titleFont, top, title);
    place(cell.timeLabel, detailsFont, second, details);
    place(cell.notesLabel, detailsFont, second, details);
    cell.colorView.frame = {0, kStripInset, kStripWidth, kRowHeight - 2 * kStripInset};
    cell.colorView.cornerRadius = kStripWidth / 2;
    cell.taskBulletImageView.frame.x = kBulletX;
    center(cell.taskBulletImageView, top + title / 2);
    center(cell.priorityView, top + title / 2);
    cell.priorityView.frame.x = kBulletX + cell.taskBulletImageView.frame.width + kGapBeforePriority;
    center(cell.alertImageView, second + details / 2);
    center(cell.repeatImageView, second + details / 2);
    cell.alertImageView.frame.x = kBulletX + cell.taskBulletImageView.frame.width + 7;
    cell.setNeedsLayout();
}

RowContent contentOfRow(const TaskTableViewCell& cell, const WidgetRow& row, const GTask& task) {
    RowContent content;
    content.taskid = row.taskid;
    content.title = row.title.value_or(std::u16string());
    content.notes = std::u16string(task.notes().value_or(std::u16string_view()));
    content.spoken = spokenText(row, task);
    content.colorView = cell.colorView;
    content.bullet = cell.taskBulletImageView;
    content.priority = cell.priorityView;
    content.alert = cell.alertImageView;
    content.repeat = cell.repeatImageView;
    content.titleLabel = cell.titleLabel;
    content.timeLabel = cell.timeLabel;
    content.notesLabel = cell.notesLabel;
    content.reminderSign = cell.alertImageView;
    content.reminderSign.isHidden = true;
    content.reminderLabel.isHidden = true;
    return content;
}

void setReminder(RowContent& content, const QString& reminder, const QtTextMeasuring& measuring) {
    content.reminder = reminder;
    content.reminderSign.isHidden = content.reminderLabel.isHidden = reminder.isEmpty();
    if (reminder.isEmpty()) return;
    const Rect& title = content.titleLabel.frame;
    const Rect& time = content.timeLabel.frame;
    const double end = title.x + title.width;
    double x = content.timeLabel.isHidden ? title.x : time.x + time.width + kGapAfterPiece;
    content.reminderSign.frame.x = x;
    x += content.reminderSign.frame.width + kGapAfterPiece;
    content.reminderLabel.text = coreText(reminder);
    content.reminderLabel.font = measuring.fonts().details();
    const double width = measuring.sizeOfText(*content.reminderLabel.text, content.reminderLabel.font).width;
    content.reminderLabel.frame = {x, time.y, std::clamp(end - x, 0.0, width), time.height};
    x += width + kGapAfterPiece;
    content.notesLabel.frame.x = x;
    content.notesLabel.frame.width = std::clamp(end - x, 0.0, content.notesLabel.frame.width);
}

}  // namespace corvane
