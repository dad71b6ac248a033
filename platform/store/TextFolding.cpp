#include "platform/store/TextFolding.h"

#include <algorithm>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace corvane {

namespace {

constexpr char16_t kLastAscii = 0x7F;

char16_t asciiLowerCase(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

// Runs an ICU call that writes into a buffer, a second time when the first buffer was too small. A call that
// fails leaves the text as it was.
template <class Call>
std::u16string textFromCall(std::u16string_view text, const Call& call) {
    std::u16string result(text.size() + text.size() / 2 + 8, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = call(result.data(), static_cast<std::int32_t>(result.size()), &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        result.resize(static_cast<std::size_t>(length));
        status = U_ZERO_ERROR;
        length = call(result.data(), length, &status);
    }
    if (U_FAILURE(status)) return std::u16string(text);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::u16string decomposedText(std::u16string_view text) {
    return textFromCall(text, [text](char16_t* buffer, std::int32_t capacity, UErrorCode* status) {
        const UNormalizer2* normalizer = unorm2_getNFDInstance(status);
        return unorm2_normalize(normalizer, text.data(), static_cast<std::int32_t>(text.size()), buffer,
                                capacity, status);
    });
}

std::u16string withoutNonspacingMarks(const std::u16string& text) {
    std::u16string kept;
    kept.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = i;
        UChar32 codePoint = 0;
        U16_NEXT(text, i, text.size(), codePoint);
        if (u_charType(codePoint) != U_NON_SPACING_MARK) kept.append(text, start, i - start);
    }
    return kept;
}

std::u16string caseFoldedText(std::u16string_view text) {
    return textFromCall(text, [text](char16_t* buffer, std::int32_t capacity, UErrorCode* status) {
        return u_strFoldCase(buffer, capacity, text.data(), static_cast<std::int32_t>(text.size()),
                             U_FOLD_CASE_DEFAULT, status);
    });
}

}  // namespace

std::u16string foldedText(std::u16string_view text, TextOptions options) {
    std::u16string folded(text);
    if (std::ranges::all_of(text, [](char16_t unit) { return unit <= kLastAscii; })) {
        if (options.ignoresCase) std::ranges::transform(folded, folded.begin(), asciiLowerCase);
        return folded;
    }
    if (options.ignoresDiacritics) folded = withoutNonspacingMarks(decomposedText(folded));
    if (options.ignoresCase) folded = caseFoldedText(folded);
    return folded;
}

}  // namespace corvane
