// Counts in texts that were written for people, whatever the language.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace corvane {

/// The counts that a text may speak of: the numbers in it, 1 to 9999, and also 1 and 2, which many languages
/// tell without a digit. In no particular order; a count may come twice.
std::vector<std::int32_t> countsToTry(std::u16string_view text);

}  // namespace corvane
