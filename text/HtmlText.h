// Texts between HTML and plain: tags and white space taken out, line breaks and web addresses marked up.
//
// Everything counts UTF-16 code units; lone surrogates pass through. White space is the blank, the tab and
// the line breaks: line feed, carriage return, form feed, U+0085, U+2028 and U+2029. Nothing fails, and large
// or hostile texts take time about in proportion to their length.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Readable plain text: tags and comments vanish, every run of white space becomes one blank, character
/// references are decoded last.
///
/// A closing tag that is not an inline one ("</p>", but not "</b>") separates words by a blank, also at the
/// very end; opening tags add nothing. Every "<" starts a tag: without its ">", or a comment without its
/// "-->", the rest of the text is lost.
std::u16string stringByConvertingHTMLToPlainText(std::u16string_view html);

/// A cruder conversion: each tag becomes a blank, or nothing when it is a plain "a", "span", "strong" or "em"
/// tag, and white space collapses. A text without "<" comes back unchanged, its white space too. References
/// stay. An unterminated tag stays as text.
std::u16string stringByStrippingTags(std::u16string_view html);

/// Each line break becomes "<br />"; a carriage return and line feed count as one where a run of line breaks
/// begins with them, and as two inside it.
std::u16string stringWithNewLinesAsBRs(std::u16string_view text);

/// Each run of white space becomes one blank; none stays at either end.
std::u16string stringByRemovingNewLinesAndWhitespace(std::u16string_view text);

/// Wraps each http and https address into `<a href="..." class="linkified">...</a>`, unless `="` precedes it.
/// The text is not escaped. It comes back without links when the search needs more time or memory than a
/// search may take.
std::u16string stringByLinkifyingURLs(std::u16string_view text);

}  // namespace corvane
