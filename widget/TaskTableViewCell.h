// One row of the widget's table.
//
// First line: bullet, priority mark, title. Second line, each piece after the one before: alert icon, repeat
// icon, due text, notes. The cell decides what shows and where it stands from left to right; vertical places
// and fonts are the host's, which may set them in the table's cell factory.
#pragma once

#include "platform/views/ImageView.h"
#include "platform/views/Label.h"
#include "platform/views/TableViewCell.h"
#include "platform/views/TextMeasuring.h"

namespace corvane {

class GTask;

class TaskTableViewCell final : public TableViewCell {
  public:
    /// @param measuring  outlives the cell
    explicit TaskTableViewCell(const TextMeasuring& measuring);

    // Outlets
    ImageView priorityView;
    View colorView;
    ImageView taskBulletImageView;
    Label titleLabel;
    ImageView alertImageView;
    ImageView repeatImageView;
    Label timeLabel;
    Label notesLabel;

    void awakeFromNib() override;

    /// Fills every view from the task, as of now, and asks for a new layout. Of a task shown before, nothing
    /// stays but the image of a hidden priority mark.
    void setTask(const GTask& task);

    void layoutSubviews() override;

  private:
    void showBullet(const GTask& task);
    void showDates(const GTask& task);
    void showPriority(const GTask& task);
    void showNotes(const GTask& task);
    void layoutTitle(double x);
    void layoutSecondLine(double x);

    const TextMeasuring& measuring_;
};

}  // namespace corvane
