#include "apps/corvane-today/PriorityChoice.h"

#include "apps/corvane-today/QtText.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

struct Band {
    std::int32_t first;
    const char* name;
};
constexpr Band kBands[] = {
    {0,  textKey("None")  },
    {30, textKey("Low")   },
    {40, textKey("Medium")},
    {50, textKey("High")  },
};

}  // namespace

PriorityChoice::PriorityChoice(QWidget* parent) : ChoiceField(parent) {
    for (const Band& band : kBands) addItem(translated(band.name), band.first);
}

// Unsigned as in the widget, so that a negative one is high.
void PriorityChoice::showPriority(std::int32_t priority) {
    int index = 0;
    for (int band = 0; band < count(); ++band) {
        const auto first = static_cast<std::uint32_t>(itemData(band).toInt());
        if (static_cast<std::uint32_t>(priority) >= first) index = band;
    }
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
}

}  // namespace corvane
