// Counts what the program takes from the heap. Linking it in replaces the global operators.
#pragma once

#include <cstddef>

namespace corvane {

/// Calls of operator new since the program began.
std::size_t allocationCount();

}  // namespace corvane
