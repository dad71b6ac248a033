// The base of a row in a table: its content's place, its selection, its deferred layout.
#pragma once

#include "platform/views/View.h"

namespace corvane {

class TableViewCell {
  public:
    TableViewCell() = default;
    virtual ~TableViewCell() = default;
    TableViewCell(const TableViewCell&) = delete;
    TableViewCell& operator=(const TableViewCell&) = delete;

    View contentView;

    /// One-time set-up, after the cell was made and its views were placed.
    virtual void awakeFromNib() {}
    virtual void layoutSubviews() {}

    virtual void setSelected(bool selected, bool /*animated*/) { isSelected_ = selected; }
    bool isSelected() const { return isSelected_; }

    void setNeedsLayout() { needsLayout_ = true; }
    /// Lays out when somebody has asked for it; a host calls it before it reads frames.
    void layoutIfNeeded() {
        if (!needsLayout_) return;
        needsLayout_ = false;
        layoutSubviews();
    }

  private:
    bool isSelected_ = false;
    bool needsLayout_ = true;
};

}  // namespace corvane
