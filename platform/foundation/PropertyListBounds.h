// Bounds on a property list that hold before it is parsed.
//
// The parser below expands shared objects into copies and goes one call deeper per level, so a few hundred
// bytes can ask for all memory or the whole stack. Format: binary property list, "bplist00".
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace corvane {

inline constexpr std::size_t kMaximumPropertyListSize = std::size_t{16} * 1024 * 1024;  ///< bytes
inline constexpr int kMaximumPropertyListDepth = 64;
inline constexpr int kMaximumPropertyListNodes = 100'000;  ///< shared nodes count at every use

bool isBinaryPropertyList(std::span<const std::uint8_t> data);

/// Whether the containers of a binary property list, followed from its root, stay within the bounds. A cycle
/// does not, nor does a dictionary with a key that is no text or holds a NUL, at which the parser would end
/// the program. Broken data elsewhere is the parser's to refuse.
bool isBoundedBinaryPropertyList(std::span<const std::uint8_t> data);

/// Whether an XML property list has few enough elements and containers, nested or not, for its parser.
bool isBoundedXmlPropertyList(std::span<const std::uint8_t> data);

}  // namespace corvane
