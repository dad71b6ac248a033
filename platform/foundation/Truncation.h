// Conversion of a double to a whole number, defined for every double.
#pragma once

#include <concepts>
#include <limits>

namespace corvane {

/// The number without its fraction; beyond the type's range its nearest end. What is no number gives 0.
template <std::signed_integral Integer>
constexpr Integer truncated(double number) {
    constexpr auto kFirst = static_cast<double>(std::numeric_limits<Integer>::min());
    constexpr double kBeyond = -kFirst;  // exact, where the largest value itself is not
    if (number != number) return 0;
    if (number < kFirst) return std::numeric_limits<Integer>::min();
    if (number >= kBeyond) return std::numeric_limits<Integer>::max();
    return static_cast<Integer>(number);
}

}  // namespace corvane
