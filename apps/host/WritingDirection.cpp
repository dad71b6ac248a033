#include "apps/host/WritingDirection.h"

#include <algorithm>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace corvane {
namespace {

constexpr char16_t kFirstStrongIsolate = u'\u2068';
constexpr char16_t kPopDirectionalIsolate = u'\u2069';
constexpr char16_t kReplacement = u'\uFFFD';
constexpr char16_t kFirstRightToLeft = u'\u0590';

}  // namespace

bool hasRightToLeftText(std::u16string_view text) {
    if (std::ranges::all_of(text, [](char16_t unit) { return unit < kFirstRightToLeft; })) return false;
    for (std::size_t i = 0; i < text.size();) {
        UChar32 c = 0;
        U16_NEXT(text, i, text.size(), c);
        const UCharDirection direction = u_charDirection(c);
        if (direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC) return true;
    }
    return false;
}

std::u16string isolatedText(std::u16string_view text) {
    std::u16string result(1, kFirstStrongIsolate);
    result += text;
    std::ranges::replace_if(result.begin() + 1, result.end(), turnsWritingDirection, kReplacement);
    result += kPopDirectionalIsolate;
    return result;
}

}  // namespace corvane
