// A moment as RFC 3339 writes it, with the clock that it was read from.
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/Date.h"

namespace corvane {

struct ZonedMoment {
    Date wallClock;                      ///< read as if it were UTC
    std::optional<TimeInterval> offset;  ///< of the wall clock from UTC; none: the text does not say

    /// @param otherwise  the offset of a text that does not say it
    Date date(TimeInterval otherwise) const { return wallClock - offset.value_or(otherwise); }
};

/// Reads "2024-03-05T14:00:00", with or without a fraction of a second, which is dropped, and with "Z", an
/// offset like "+02:00" or none. None for every other text.
std::optional<ZonedMoment> zonedMomentFromText(std::u16string_view text);

}  // namespace corvane
