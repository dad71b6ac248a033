// The bands of priorities that people tell apart; the numbers between them count within a band only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace corvane {

enum class PriorityBand : std::uint8_t { kNone, kLow, kMedium, kHigh };

/// The lowest priority of each band.
inline constexpr std::int32_t kPriorityBandStarts[] = {0, 30, 40, 50};

constexpr std::int32_t lowestPriority(PriorityBand band) {
    return kPriorityBandStarts[static_cast<std::size_t>(band)];
}

/// Priorities compare unsigned, so that a negative one is high.
constexpr PriorityBand bandOfPriority(std::int32_t priority) {
    std::size_t band = std::size(kPriorityBandStarts) - 1;
    while (static_cast<std::uint32_t>(priority) < static_cast<std::uint32_t>(kPriorityBandStarts[band]))
        --band;
    return static_cast<PriorityBand>(band);
}

}  // namespace corvane
