// A text of several lines that can be edited.
#pragma once

#include <optional>
#include <string>

#include "platform/views/Font.h"
#include "platform/views/View.h"

namespace corvane {

struct TextView : View {
    std::optional<std::u16string> text;
    Font font;
    Size contentSize;  ///< of the whole text with its insets, whatever the frame shows of it

    bool operator==(const TextView&) const = default;
};

}  // namespace corvane
