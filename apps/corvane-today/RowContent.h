// What a row of the window shows, taken from its cell: it stays drawable when cell and task have moved on.
#pragma once

#include <string>

#include <QString>

#include "platform/views/ImageView.h"
#include "platform/views/Label.h"
#include "widget/TaskTableViewCell.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {

class GTask;
class QtTextMeasuring;

struct RowContent {
    std::string taskid;
    std::u16string title;
    std::u16string notes;  ///< with their line breaks
    QString spoken;        ///< the row in words: title, priority, due, repeat, list
    QString reminder;      ///< "Reminder at 14:30"; empty without one

    View colorView;
    ImageView bullet;
    ImageView priority;
    ImageView alert;
    ImageView repeat;
    Label titleLabel;
    Label timeLabel;
    Label notesLabel;
    ImageView reminderSign;
    Label reminderLabel;

    bool operator==(const RowContent&) const = default;
};

/// Gives a cell the fonts and the vertical places that the fonts ask for; it is laid out when it is next
/// asked.
void placeOutlets(TaskTableViewCell& cell, const QtTextMeasuring& measuring);

/// @param cell, row  as they show the task
RowContent contentOfRow(const TaskTableViewCell& cell, const WidgetRow& row, const GTask& task);

/// Tells of a reminder between time and notes; an empty text: of none.
void setReminder(RowContent& content, const QString& reminder, const QtTextMeasuring& measuring);

}  // namespace corvane
