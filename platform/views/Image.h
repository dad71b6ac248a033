// An image: an asset by its name, or pixels.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/views/Geometry.h"

namespace corvane {

struct Image {
    /// kTemplate: only the alpha channel counts, the tint colour of the view fills it.
    enum class RenderingMode : std::uint8_t { kAutomatic, kTemplate };
    /// Red, green, blue, alpha; straight, not premultiplied.
    using Pixel = std::array<std::uint8_t, 4>;

    std::string name;           ///< of the asset; empty for pixels
    Size size;                  ///< in points
    std::vector<Pixel> pixels;  ///< row by row from the top, one pixel a point; empty for an asset
    RenderingMode renderingMode = RenderingMode::kAutomatic;

    static Image named(std::string name, Size size) { return {std::move(name), size, {}, {}}; }

    /// The same image in another rendering mode.
    Image withRenderingMode(RenderingMode mode) const {
        Image image = *this;
        image.renderingMode = mode;
        return image;
    }

    bool operator==(const Image&) const = default;
};

}  // namespace corvane
