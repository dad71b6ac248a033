// A font as the widget's rules see it: something to measure with. A host chooses the face.
#pragma once

namespace corvane {

struct Font {
    double pointSize = 17;
    bool isBold = false;

    bool operator==(const Font&) const = default;
};

}  // namespace corvane
