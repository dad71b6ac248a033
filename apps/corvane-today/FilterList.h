// The task filters with how many tasks each has.
#pragma once

#include <cstdint>
#include <functional>

#include <QListWidget>
#include <QTimer>

#include "apps/host/TaskSelection.h"

namespace corvane {

class FilterList : public QListWidget {
    Q_OBJECT
  public:
    explicit FilterList(QWidget* parent);

    std::uint32_t filter() const { return static_cast<std::uint32_t>(currentRow()); }
    void choose(std::uint32_t filter) { setCurrentRow(static_cast<int>(filter)); }
    /// Counts the tasks of every filter in a selection, which is asked for anew each time; one query each and
    /// one query in a turn of the event loop: with very many tasks the window stays at hand meanwhile.
    void countTasks(std::function<TaskSelection()> selection);
    bool isCounting() const { return counting_.isActive(); }
    /// None before they were counted.
    QString countText(std::uint32_t filter) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {sizeHint().width(), 0}; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void updateIcons();
    void countNext();

    QTimer counting_;
    std::uint32_t nextFilter_ = 0;
    std::function<TaskSelection()> selection_;
};

}  // namespace corvane
