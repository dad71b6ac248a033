// Tasks that were just completed or moved away: their rows stay a moment, so that nobody takes them for lost.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include <QObject>
#include <QTimer>

#include "apps/corvane-today/RowContent.h"
#include "apps/corvane-today/RowPainting.h"

namespace corvane {

struct RecentAct {
    RowContent content;  ///< as the row was before
    RowAct act = RowAct::kCompleted;
    std::size_t place = 0;  ///< in the list as it was shown
    std::chrono::steady_clock::time_point end;
};

class RecentActs : public QObject {
    Q_OBJECT
  public:
    explicit RecentActs(QObject* parent = nullptr);

    /// How long a row stays.
    void setDuration(std::chrono::milliseconds duration) { duration_ = duration; }

    void add(RowContent content, RowAct act, std::size_t place);
    void remove(const std::string& taskid);
    /// Sorted by place.
    const std::vector<RecentAct>& acts() const { return acts_; }

  Q_SIGNALS:
    /// The time of at least one was over.
    void ended();

  private:
    void removeEnded();
    void arm();

    std::chrono::milliseconds duration_ = std::chrono::seconds(8);
    std::vector<RecentAct> acts_;
    QTimer timer_;
};

}  // namespace corvane
