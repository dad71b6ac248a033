// A text that is shown and not edited.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/views/Font.h"
#include "platform/views/TextMeasuring.h"
#include "platform/views/View.h"

namespace corvane {

struct Label : View {
    std::optional<std::u16string> text;
    std::optional<Color> textColor;  ///< none: the host's own
    Font font;

    /// Gives the frame the size of the text on one line; the origin stays.
    void sizeToFit(const TextMeasuring& measuring) {
        const Size size = measuring.sizeOfText(text ? *text : std::u16string_view(), font);
        frame.width = size.width;
        frame.height = size.height;
    }

    bool operator==(const Label&) const = default;
};

}  // namespace corvane
