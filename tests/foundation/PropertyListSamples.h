// Property lists for tests, sound and hostile.
#pragma once

#include <random>
#include <string>
#include <string_view>

#include "platform/foundation/PropertyList.h"

namespace corvane {

Bytes bytesOf(std::string_view text);

std::string repeated(std::string_view text, int count);

/// An XML property list around one value.
std::string xmlPropertyList(std::string_view value);

/// A binary property list of `arrays` arrays, each of which refers `fanOut` times to the next; the last one
/// refers to object `last`, where `last` = `arrays` is the object of the bytes `leaf`, or a boolean.
Bytes nestedBinary(std::uint32_t arrays, int fanOut, std::uint32_t last, std::string_view leaf = "\x09");

/// The data with one to four bytes changed, or a piece cut out or doubled.
Bytes mutated(Bytes data, std::mt19937& random);

}  // namespace corvane
