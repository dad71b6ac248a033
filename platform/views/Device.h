// The device and its main screen, as the widget's rules ask for them.
#pragma once

#include <string>

#include "platform/views/Geometry.h"

namespace corvane {

enum class UserInterfaceIdiom { kPhone = 0, kPad = 1 };

struct Device {
    std::u16string systemVersion = u"13.0";
    UserInterfaceIdiom userInterfaceIdiom = UserInterfaceIdiom::kPhone;

    bool operator==(const Device&) const = default;
};

struct Screen {
    Rect bounds{0, 0, 375, 667};

    bool operator==(const Screen&) const = default;
};

/// Compares two version texts number by number: "9.3" < "10.0", "10" < "10.0.1".
/// @return negative, zero or positive; a part that is no number counts as 0, a missing part as less
int compareVersionsNumerically(std::u16string_view a, std::u16string_view b);

}  // namespace corvane
