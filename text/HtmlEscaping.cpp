#include "text/HtmlEscaping.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "text/CharacterSets.h"
#include "text/TextScanner.h"

namespace corvane {
namespace {

constexpr bool kEscapingUnicode = true;
constexpr bool kKeepingUnicode = false;

constexpr std::uint32_t kFirstNonAscii = 0x80;
constexpr std::uint32_t kBeyondAllUnits = 0x10000;

constexpr std::size_t kShortestReference = 4;  // "&lt;"
constexpr std::size_t kLongestReference = 10;  // "&thetasym;"

// The first position from `start` on whose unit does not stay as it is. Blocks are asked as a whole, without
// a branch per unit: most of them hold nothing to escape.
std::size_t endOfUnchangedRun(std::u16string_view text, std::size_t start, const HtmlEntityTable& table,
                              std::uint32_t firstNumeric) {
    constexpr std::size_t kBlock = 8;
    const auto changes = [&](char16_t unit) { return table.contains(unit) | (unit >= firstNumeric); };
    for (; start + kBlock <= text.size(); start += kBlock) {
        bool anyChanges = false;
        for (std::size_t i = 0; i < kBlock; ++i) anyChanges |= changes(text[start + i]);
        if (anyChanges) break;
    }
    while (start < text.size() && !changes(text[start])) ++start;
    return start;
}

void appendDecimalReference(std::u16string& result, char16_t unit) {
    result += u"&#";
    for (const char digit : std::to_string(static_cast<unsigned>(unit)))
        result += static_cast<char16_t>(digit);
    result += u';';
}

// The unit that the digits of a numeric reference name; `digits` excludes "&#", the "x" and the semicolon.
// They are at most seven, so that the value cannot overflow. A minus sign needs no reading: no negative
// number names a unit.
std::optional<char16_t> unitOfNumber(std::u16string_view digits, bool hexadecimal) {
    TextScanner scanner(digits);
    scanner.scanCharacters(isWhiteSpace);
    if (hexadecimal) {
        if (!scanner.scanString(u"0x")) scanner.scanString(u"0X");
    } else {
        scanner.scanString(u"+");
    }
    const std::uint32_t base = hexadecimal ? 16 : 10;
    const auto isDigit = [base](char16_t unit) { return hexDigitValue(unit) < base; };
    std::uint32_t value = 0;
    for (const char16_t digit : scanner.scanCharacters(isDigit)) value = value * base + hexDigitValue(digit);
    if (!scanner.isAtEnd() || value < 1 || value > 65534) return std::nullopt;
    return static_cast<char16_t>(value);
}

std::optional<char16_t> unitOfReference(std::u16string_view reference) {
    if (reference.size() < kShortestReference) return std::nullopt;
    if (reference[1] != u'#') return unitOfHtmlReference(reference);
    const bool hexadecimal = asciiLowercase(reference[2]) == u'x';
    const std::size_t start = hexadecimal ? 3 : 2;
    return unitOfNumber(reference.substr(start, reference.size() - 1 - start), hexadecimal);
}

// The text from the ampersand at `start` to its semicolon. Empty when another ampersand, the end of the text
// or the length of the longest reference comes before one.
std::u16string_view referenceAt(std::u16string_view text, std::size_t start) {
    const std::u16string_view window = text.substr(start, kLongestReference);
    const auto isEnd = [](char16_t unit) { return unit == u';' || unit == u'&'; };
    const auto end = std::find_if(window.begin() + 1, window.end(), isEnd);
    if (end == window.end() || *end == u'&') return {};
    return {window.begin(), end + 1};
}

}  // namespace

std::u16string gtm_stringByEscapingHTMLUsingTable(std::u16string_view text, const HtmlEntityTable& table,
                                                  bool escapingUnicode) {
    const std::uint32_t firstNumeric = escapingUnicode ? kFirstNonAscii : kBeyondAllUnits;
    std::u16string result;
    result.reserve(2 * text.size());
    std::size_t position = 0;
    while (true) {
        const std::size_t end = endOfUnchangedRun(text, position, table, firstNumeric);
        result.append(text, position, end - position);
        if (end == text.size()) return result;
        if (table.contains(text[end])) {
            result += table.entityOfUnit(text[end]).reference;
        } else {
            appendDecimalReference(result, text[end]);
        }
        position = end + 1;
    }
}

std::u16string gtm_stringByEscapingForHTML(std::u16string_view text) {
    return gtm_stringByEscapingHTMLUsingTable(text, kSpecialHtmlEntities, kKeepingUnicode);
}

std::u16string gtm_stringByEscapingForAsciiHTML(std::u16string_view text) {
    return gtm_stringByEscapingHTMLUsingTable(text, kHtmlEntities, kEscapingUnicode);
}

// A candidate ends before the next ampersand, so candidates never overlap, and reading them from the first to
// the last gives what replacing them from the last to the first would give.
std::u16string gtm_stringByUnescapingFromHTML(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    std::size_t position = 0;
    while (true) {
        const std::size_t ampersand = std::min(text.find(u'&', position), text.size());
        result.append(text, position, ampersand - position);
        if (ampersand == text.size()) return result;
        const std::u16string_view reference = referenceAt(text, ampersand);
        const std::optional<char16_t> unit = unitOfReference(reference);
        result += unit.value_or(u'&');
        position = ampersand + (unit ? reference.size() : 1);
    }
}

std::u16string stringByEncodingHTMLEntities(std::u16string_view text) {
    return gtm_stringByEscapingForAsciiHTML(text);
}

std::u16string stringByDecodingHTMLEntities(std::u16string_view text) {
    return gtm_stringByUnescapingFromHTML(text);
}

}  // namespace corvane
