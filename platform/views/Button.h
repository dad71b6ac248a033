// A button; title and image are those of its normal state.
#pragma once

#include <optional>
#include <string>

#include "platform/views/Image.h"
#include "platform/views/View.h"

namespace corvane {

struct Button : View {
    std::optional<std::u16string> title;
    std::optional<Image> image;

    bool operator==(const Button&) const = default;
};

}  // namespace corvane
