// A choice among the priorities that the widget marks.
#pragma once

#include <cstdint>

#include "apps/corvane-today/ChoiceField.h"

namespace corvane {

class PriorityChoice : public ChoiceField {
    Q_OBJECT
  public:
    explicit PriorityChoice(QWidget* parent);

    /// Shows the band that a priority lies in.
    void showPriority(std::int32_t priority);
    /// The lowest number of the chosen band.
    std::int32_t priority() const { return currentData().toInt(); }
};

}  // namespace corvane
