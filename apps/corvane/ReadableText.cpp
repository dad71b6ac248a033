#include "apps/corvane/ReadableText.h"

#include "apps/host/TaskEditing.h"
#include "platform/foundation/RegularExpression.h"
#include "text/HtmlEscaping.h"
#include "text/HtmlText.h"

namespace corvane {
namespace {

constexpr bool kCaseInsensitive = true;

bool isHtml(std::u16string_view text) {
    static const auto html = RegularExpression::compile(
        u"(?=[\\s\\S]*(?:</|<br\\b[^<>]*>\\s*+[^<\\s]))"
        u"[^<]*+(?:</?(?:a|b|i|p|q|s|u|br|em|hr|li|ol|td|th|tr|ul|div|pre|sub|sup|body|code|font|html|span|"
        u"small|table|tbody|strong|blockquote|h[1-6])(?:\\s[^<>]*)?/?>[^<]*+)++",
        kCaseInsensitive);
    return html && html->matches(text).value_or(false);
}

// Line breaks where people see them; a line feed that follows in the source is the same one.
std::u16string withLineBreaks(std::u16string_view html) {
    static const auto ends = RegularExpression::compile(
        u"(?:<br(?:\\s[^<>]*)?/?>|</(?:p|li|tr|div|pre|blockquote|h[1-6])(?:\\s[^<>]*)?>)\n?",
        kCaseInsensitive);
    std::u16string text(html);
    return ends ? ends->replaceAll(text, u"\n").value_or(text) : text;
}

// Converts line by line, since the conversion makes one line of all. A line feed inside a tag ends none.
std::u16string plainLines(std::u16string_view html) {
    std::u16string result;
    std::size_t start = 0;
    bool isInTag = false;
    for (std::size_t i = 0; i <= html.size(); ++i) {
        const bool isAtEnd = i == html.size();
        if (!isAtEnd && html[i] == u'<') isInTag = true;
        if (!isAtEnd && html[i] == u'>') isInTag = false;
        if (!isAtEnd && (html[i] != u'\n' || isInTag)) continue;
        result += titleFromText(stringByConvertingHTMLToPlainText(html.substr(start, i - start)));
        result += u'\n';
        start = i + 1;
    }
    const std::size_t first = result.find_first_not_of(u'\n');
    if (first == result.npos) return {};
    return result.substr(first, result.find_last_not_of(u'\n') + 1 - first);
}

}  // namespace

std::u16string readableText(std::u16string_view text) {
    if (text.find(u'<') == text.npos) return stringByDecodingHTMLEntities(text);
    return isHtml(text) ? plainLines(withLineBreaks(text)) : std::u16string(text);
}

std::u16string readableTitle(std::u16string_view text) {
    const std::u16string title = titleFromText(readableText(text));
    return title.empty() ? std::u16string(text) : title;
}

}  // namespace corvane
