// The widget's vertical measures, in points, and how many rows they leave room for.
#pragma once

#include <cstdint>

#include "platform/foundation/Truncation.h"

namespace corvane {

inline constexpr double kRowHeight = 44;
inline constexpr double kTopMargin = 5;
inline constexpr double kFooterHeight = 26;
inline constexpr double kShowAllHeight = 34;
inline constexpr double kBottomMargin = 8;
inline constexpr double kEmptyWidgetHeight = 73;
inline constexpr double kMinimumHeight = 68;
inline constexpr double kLeftMargin = 7;

/// What older systems leave of the screen's height beside the widget.
inline constexpr double kOlderPhoneAllowance = 126;
inline constexpr double kOlderPadAllowance = 171;

/// Rows beside footer and View More button. Zero or negative where the height is too short for them; a
/// height beyond all numbers of rows gives the nearest one, no number gives 0.
constexpr std::int64_t rowsThatFit(double height) {
    return truncated<std::int64_t>((height - kTopMargin - kFooterHeight - kShowAllHeight - kBottomMargin) /
                                   kRowHeight);
}

}  // namespace corvane
