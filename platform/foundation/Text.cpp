#include "platform/foundation/Text.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace corvane {

std::u16string textFromUtf8(std::string_view utf8) {
    std::u16string text;
    text.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        UChar32 codePoint = 0;
        U8_NEXT_OR_FFFD(utf8, i, utf8.size(), codePoint);
        if (U_IS_BMP(codePoint)) {
            text.push_back(static_cast<char16_t>(codePoint));
        } else {
            text.push_back(U16_LEAD(codePoint));
            text.push_back(U16_TRAIL(codePoint));
        }
    }
    return text;
}

std::string utf8FromText(std::u16string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        UChar32 codePoint = 0;
        U16_NEXT_OR_FFFD(text, i, text.size(), codePoint);
        char bytes[U8_MAX_LENGTH];
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, codePoint);
        utf8.append(bytes, length);
    }
    return utf8;
}

}  // namespace corvane
