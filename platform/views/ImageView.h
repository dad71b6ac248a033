// A view that shows an image, or nothing.
#pragma once

#include <optional>

#include "platform/views/Image.h"
#include "platform/views/View.h"

namespace corvane {

struct ImageView : View {
    std::optional<Image> image;

    /// Gives the frame the size of the image, nothing without one; the origin stays.
    void sizeToFit() {
        const Size size = image ? image->size : Size();
        frame.width = size.width;
        frame.height = size.height;
    }

    bool operator==(const ImageView&) const = default;
};

}  // namespace corvane
