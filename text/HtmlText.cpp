#include "text/HtmlText.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "platform/foundation/RegularExpression.h"
#include "text/CharacterSets.h"
#include "text/HtmlEscaping.h"
#include "text/TagReplacement.h"
#include "text/TextScanner.h"

namespace corvane {
namespace {

constexpr std::u16string_view kInlineTagNames[] = {u"a",      u"b",    u"i",    u"q",       u"span", u"em",
                                                   u"strong", u"cite", u"abbr", u"acronym", u"label"};

constexpr std::u16string_view kLineBreakTag = u"<br />";

// The doubled percent sign and "&amp;" inside the brackets only add "%", "&", "a", "m", "p" and ";" to the
// sets; what is linked depends on them.
constexpr std::u16string_view kAddressPattern =
    uR"re((?<!=")\b((http|https):\/\/[\w\-_]+(\.[\w\-_]+)+)re"
    uR"re(([\w\-\.,@?^=%%&amp;:/~\+#]*[\w\-\@?^=%%&amp;/~\+#])?))re";
constexpr std::u16string_view kAddressLink = uR"(<a href="$1" class="linkified">$1</a>)";

bool isTagStartOrWhiteSpace(char16_t unit) { return unit == u'<' || isWhiteSpace(unit); }

bool isInlineTagName(std::u16string_view name) {
    const auto names = [name](std::u16string_view inlineName) {
        return std::ranges::equal(name, inlineName, {}, asciiLowercase);
    };
    return std::ranges::any_of(kInlineTagNames, names);
}

// Words are separated only between them: not before the first one nor after the last unit read.
void appendSeparator(std::u16string& result, const TextScanner& scanner) {
    if (!result.empty() && !scanner.isAtEnd()) result += u' ';
}

// Reads a comment or tag whose "<" has been read. Whether anything follows a closing tag is asked before its
// ">" is read, so that a block that ends the text leaves a blank: texts put together from such pieces stay
// apart.
void skipMarkup(TextScanner& scanner, std::u16string& result) {
    if (scanner.scanString(u"!--")) {
        scanner.scanUpToString(u"-->");
        scanner.scanString(u"-->");
        return;
    }
    if (scanner.scanString(u"/") && !isInlineTagName(scanner.scanCharacters(isAsciiLetter))) {
        appendSeparator(result, scanner);
    }
    scanner.scanUpToString(u">");
    scanner.scanString(u">");
}

}  // namespace

std::u16string stringByConvertingHTMLToPlainText(std::u16string_view html) {
    std::u16string result;
    result.reserve(html.size());
    TextScanner scanner(html);
    while (!scanner.isAtEnd()) {
        result += scanner.scanUpToCharacters(isTagStartOrWhiteSpace);
        if (scanner.scanString(u"<")) {
            skipMarkup(scanner, result);
        } else if (!scanner.scanCharacters(isWhiteSpace).empty()) {
            appendSeparator(result, scanner);
        }
    }
    return stringByDecodingHTMLEntities(result);
}

std::u16string stringByStrippingTags(std::u16string_view html) {
    if (html.find(u'<') == html.npos) return std::u16string(html);
    return stringByRemovingNewLinesAndWhitespace(stringByReplacingTags(html));
}

std::u16string stringWithNewLinesAsBRs(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    TextScanner scanner(text);
    while (!scanner.isAtEnd()) {
        result += scanner.scanUpToCharacters(isLineBreak);
        if (scanner.scanString(u"\r\n")) {
            result += kLineBreakTag;
            continue;
        }
        const std::size_t breaks = scanner.scanCharacters(isLineBreak).size();
        for (std::size_t i = 0; i < breaks; ++i) result += kLineBreakTag;
    }
    return result;
}

std::u16string stringByRemovingNewLinesAndWhitespace(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    TextScanner scanner(text);
    while (!scanner.isAtEnd()) {
        result += scanner.scanUpToCharacters(isWhiteSpace);
        if (!scanner.scanCharacters(isWhiteSpace).empty()) appendSeparator(result, scanner);
    }
    return result;
}

std::u16string stringByLinkifyingURLs(std::u16string_view text) {
    static const std::optional<RegularExpression> address = RegularExpression::compile(kAddressPattern);
    if (!address) return std::u16string(text);
    std::optional<std::u16string> linked = address->replaceAll(text, kAddressLink);
    return linked ? *std::move(linked) : std::u16string(text);
}

}  // namespace corvane
