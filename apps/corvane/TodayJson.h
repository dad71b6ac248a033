// The widget as one JSON object: a promise to scripts. Fields are added, never renamed or left out; a missing
// value is null.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/foundation/Date.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {

/// What the object tells beside what shows.
struct TodayFacts {
    Date now;
    Date validUntil;
    std::size_t overdueCount = 0;
    std::optional<std::string> problem;  ///< why there is no store
};

/// UTF-8 on one line. Texts that are no valid Unicode get replacement characters.
std::string todayJson(const WidgetSnapshot& widget, const TodayFacts& facts);

}  // namespace corvane
