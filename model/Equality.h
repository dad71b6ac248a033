// Equality of two values that may be missing.
#pragma once

#include <type_traits>

namespace corvane {

/// Whether both are none, or both are there and equal. Takes optionals and pointers; pointers to a type
/// without an equality of its own are equal when they are the same.
template <class A, class B>
constexpr bool AreEqualOrBothNil(const A& a, const B& b) {
    if constexpr (std::is_pointer_v<A> && std::is_pointer_v<B>) {
        if constexpr (requires { *a == *b; }) return a == b || (a && b && *a == *b);
    }
    return a == b;
}

}  // namespace corvane
