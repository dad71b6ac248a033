#include "apps/corvane/TerminalStyle.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {

TEST(TerminalStyle, TakesColorsOfAnyNumbers) {
    const TerminalStyle rich{.colors = true};
    EXPECT_EQ(rich.bold(""), "");
    EXPECT_EQ(rich.colored("x", Color::rgb(0.2, 1.5, -1)), "\033[38;2;51;255;0mx\033[0m");
    EXPECT_EQ(rich.colored("x", Color::rgb(std::numeric_limits<double>::quiet_NaN(), 0, 0)),
              "\033[38;2;0;0;0mx\033[0m");
}

TEST(TerminalStyle, ALinkHoldsNothingButVisibleAscii) {
    const TerminalStyle rich{.links = true};
    EXPECT_EQ(rich.linked("Milk", u"a://b?c=%20", "row1"),
              "\033]8;id=row1;a://b?c=%20\033\\Milk\033]8;;\033\\");
    EXPECT_EQ(rich.linked("x", u"a:\x1B\\ é"), "\033]8;;a:%1B\\%20%C3%A9\033\\x\033]8;;\033\\");
}

}  // namespace
}  // namespace corvane
