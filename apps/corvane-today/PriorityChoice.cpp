#include "apps/corvane-today/PriorityChoice.h"

#include "apps/corvane-today/QtText.h"
#include "platform/foundation/Localization.h"
#include "widget/PriorityBands.h"

namespace corvane {
namespace {

// By band, from the lowest.
constexpr const char* kNames[] = {textKey("None"), textKey("Low"), textKey("Medium"), textKey("High")};

}  // namespace

PriorityChoice::PriorityChoice(QWidget* parent) : ChoiceField(parent) {
    for (std::size_t band = 0; band < std::size(kNames); ++band) {
        addItem(translated(kNames[band]), kPriorityBandStarts[band]);
    }
}

void PriorityChoice::showPriority(std::int32_t priority) {
    const QSignalBlocker blocker(this);
    setCurrentIndex(static_cast<int>(bandOfPriority(priority)));
}

}  // namespace corvane
