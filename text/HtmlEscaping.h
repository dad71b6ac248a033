// HTML character references: escaping by named and numeric references, and reading them back.
//
// Everything counts UTF-16 code units. Nothing fails: lone surrogates pass through, and what is no
// well-formed reference stays as it is.
#pragma once

#include <string>
#include <string_view>

#include "text/HtmlEntities.h"

namespace corvane {

/// Replaces each unit that the table contains by its reference text, in one pass.
///
/// @param escapingUnicode  other units from 128 on become decimal references ("&#20013;"). A character beyond
///                         U+FFFF becomes two of them, one per surrogate: unescaping joins them again
std::u16string gtm_stringByEscapingHTMLUsingTable(std::u16string_view text, const HtmlEntityTable& table,
                                                  bool escapingUnicode);

/// With the special entities only; every other character stays.
std::u16string gtm_stringByEscapingForHTML(std::u16string_view text);

/// With all entities and numeric references: the result is pure ASCII.
std::u16string gtm_stringByEscapingForAsciiHTML(std::u16string_view text);

/// Replaces each reference of 4 to 10 units, ampersand and semicolon included, by the unit that it names: an
/// entity of the full table, or a number from 1 to 65534, decimal (a sign may precede it) or hexadecimal
/// after `x` or `X` (`0x` may precede it); white space may precede a number. What comes out is not scanned
/// again:
/// "&amp;lt;" gives "&lt;".
std::u16string gtm_stringByUnescapingFromHTML(std::u16string_view text);

/// `gtm_stringByEscapingForAsciiHTML`.
std::u16string stringByEncodingHTMLEntities(std::u16string_view text);

/// `gtm_stringByUnescapingFromHTML`.
std::u16string stringByDecodingHTMLEntities(std::u16string_view text);

}  // namespace corvane
