// The sets of code units that the text operations read by.
#pragma once

#include <cstdint>

namespace corvane {

constexpr bool isLineBreak(char16_t unit) {
    return unit == u'\n' || unit == u'\r' || unit == u'\f' || unit == u'\u0085' || unit == u'\u2028' ||
           unit == u'\u2029';
}

constexpr bool isWhiteSpace(char16_t unit) { return unit == u' ' || unit == u'\t' || isLineBreak(unit); }

constexpr bool isAsciiLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

constexpr bool isAsciiDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

constexpr char16_t asciiLowercase(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

inline constexpr std::uint32_t kNoDigit = 16;

/// The value of a hexadecimal digit in either case, or kNoDigit.
constexpr std::uint32_t hexDigitValue(char16_t unit) {
    if (isAsciiDigit(unit)) return unit - u'0';
    const char16_t letter = asciiLowercase(unit);
    return letter >= u'a' && letter <= u'f' ? letter - u'a' + 10u : kNoDigit;
}

}  // namespace corvane
