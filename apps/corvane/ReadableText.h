// Names and notes of other programs, which may hold HTML, as plain text.
//
// Only a text that is HTML throughout is read as such: every "<" in it starts a whole tag with a known name,
// and there is a closing tag or a line break before further text. What people typed, like "a <b" or
// "Explain <p>", stays as it is. A text with character references and without "<" has them decoded.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Lines stay lines; where blocks end and at line break tags, others begin.
std::u16string readableText(std::u16string_view text);

/// The same on one line, without blanks at its ends. Where nothing would be left, the text as it is.
std::u16string readableTitle(std::u16string_view text);

}  // namespace corvane
