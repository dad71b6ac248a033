// Texts of another writing direction inside our own lines (Unicode's bidirectional algorithm, UAX #9).
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Whether a character embeds, overrides or isolates: one that has no end would turn what stands behind it.
constexpr bool turnsWritingDirection(char32_t c) {
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

/// Whether any character is written from right to left.
bool hasRightToLeftText(std::u16string_view text);

/// The text in isolates, so that neither it nor what stands around it moves the other. Characters of its own
/// that would open or end an isolate become replacement characters.
std::u16string isolatedText(std::u16string_view text);

}  // namespace corvane
