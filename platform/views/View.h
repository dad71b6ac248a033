// The base of all view values: what a host needs to know to draw one, and nothing of how.
//
// Frames are in points in the coordinates of the enclosing view, y downwards. Views hold no children: whoever
// owns the views knows how they nest.
#pragma once

#include <optional>

#include "platform/views/Color.h"
#include "platform/views/Geometry.h"

namespace corvane {

struct View {
    Rect frame;
    bool isHidden = false;
    std::optional<Color> backgroundColor;  ///< none: transparent
    std::optional<Color> tintColor;        ///< colours template images; none: the host's own
    double cornerRadius = 0;

    bool operator==(const View&) const = default;
};

}  // namespace corvane
