#include "text/UrlEncoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include "text/CharacterSets.h"

namespace corvane {
namespace {

// What an encoding leaves as it is, by unit; no unit beyond ASCII ever is.
class KeptUnits {
  public:
    constexpr explicit KeptUnits(std::u16string_view marks) {
        for (std::size_t i = 0; i < kept_.size(); ++i) {
            const auto unit = static_cast<char16_t>(i);
            kept_[i] =
                isAsciiLetter(unit) || isAsciiDigit(unit) || marks.find(unit) != std::u16string_view::npos;
        }
    }

    constexpr bool contains(char16_t unit) const { return unit < kept_.size() && kept_[unit]; }

  private:
    std::array<bool, 0x80> kept_ = {};
};

constexpr KeptUnits kKeptInStrings(u"-._~!*()");
constexpr KeptUnits kKeptInUris(u"-._~");

constexpr std::u16string_view kHexDigits = u"0123456789ABCDEF";
constexpr std::size_t kEscapeLength = 3;  // "%C3"

void appendEscapes(std::u16string& result, UChar32 character) {
    std::array<std::uint8_t, U8_MAX_LENGTH> bytes;
    std::size_t count = 0;
    U8_APPEND_UNSAFE(bytes, count, character);
    for (std::size_t i = 0; i < count; ++i) {
        result += {u'%', kHexDigits[bytes[i] >> 4], kHexDigits[bytes[i] & 0xF]};
    }
}

// Escapes each character that is not kept; a blank becomes `blank`. None for a lone surrogate.
std::optional<std::u16string> encode(std::u16string_view text, const KeptUnits& kept,
                                     std::u16string_view blank) {
    std::u16string result;
    result.reserve(text.size() + text.size() / 2);
    std::size_t position = 0;
    while (true) {
        const std::size_t start = position;
        while (position < text.size() && kept.contains(text[position])) ++position;
        result.append(text, start, position - start);
        if (position == text.size()) return result;
        UChar32 character = 0;
        U16_NEXT(text, position, text.size(), character);
        if (U_IS_SURROGATE(character)) return std::nullopt;
        if (character == u' ') {
            result += blank;
        } else {
            appendEscapes(result, character);
        }
    }
}

std::u16string encodedOrUnchanged(std::u16string_view text, std::u16string_view blank) {
    std::optional<std::u16string> encoded = encode(text, kKeptInUris, blank);
    return encoded ? *std::move(encoded) : std::u16string(text);
}

// Takes the run of escapes off the start of the text.
std::string takeEscapedBytes(std::u16string_view& text) {
    std::string bytes;
    while (text.size() >= kEscapeLength && text[0] == u'%') {
        const std::uint32_t high = hexDigitValue(text[1]);
        const std::uint32_t low = hexDigitValue(text[2]);
        if (high == kNoDigit || low == kNoDigit) break;
        bytes += static_cast<char>(high << 4 | low);
        text.remove_prefix(kEscapeLength);
    }
    return bytes;
}

// Whether the bytes are well-formed UTF-8.
bool appendUtf8(std::u16string& result, std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, bytes.size(), character);
        if (character < 0) return false;
        if (U_IS_BMP(character)) {
            result += static_cast<char16_t>(character);
        } else {
            result += {U16_LEAD(character), U16_TRAIL(character)};
        }
    }
    return true;
}

}  // namespace

std::optional<std::u16string> stringByURLEncodingString(std::u16string_view text) {
    return encode(text, kKeptInStrings, u"%20");
}

std::u16string stringByURLEncodingForURI(std::u16string_view text) {
    return encodedOrUnchanged(text, u"%20");
}

std::u16string stringByURLEncodingStringParameter(std::u16string_view text) {
    return encodedOrUnchanged(text, u"+");
}

// What stays between escapes would be whole UTF-8 sequences, so that each run of escapes has to be
// well-formed by itself.
std::optional<std::u16string> stringByURLDecodingString(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (true) {
        const std::size_t escape = std::min(text.find(u'%'), text.size());
        result += text.substr(0, escape);
        text.remove_prefix(escape);
        if (text.empty()) return result;
        const std::string bytes = takeEscapedBytes(text);
        if (bytes.empty() || !appendUtf8(result, bytes)) return std::nullopt;
    }
}

std::optional<std::u16string> stringByURLDecodingStringParameter(std::u16string_view text) {
    std::u16string blanks(text);
    std::ranges::replace(blanks, u'+', u' ');
    return stringByURLDecodingString(blanks);
}

}  // namespace corvane
