// Numbers at the start of texts, as the platform reads them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

/// The number that a text begins with: white space and a sign may come first, anything may follow the digits.
/// Beyond 64 bits its nearest end; none without digits.
std::optional<std::int64_t> leadingInteger(std::string_view text);

}  // namespace corvane
