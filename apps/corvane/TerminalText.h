// Texts from outside as a terminal may have them: harmless, measured in cells, cut where a reader would cut.
//
// A cell is the place of one Latin letter. Widths follow Unicode's East Asian width (UAX #11; ambiguous
// characters are narrow), grapheme clusters (UAX #29) and emoji presentation (UTS #51).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

/// The text on one line, without anything that a terminal obeys: control characters become their pictures
/// ("␛", "␊"), a tab a blank, and what turns or isolates the direction of writing a replacement character.
std::u16string terminalText(std::u16string_view text);

/// The same of a UTF-8 text, such as a file's name in a message.
std::string terminalUtf8(std::string_view utf8);

/// How many cells a text without controls takes.
std::size_t displayWidth(std::u16string_view text);

/// The whole text when it fits, else as many of its grapheme clusters as leave a cell for "…". Marks without
/// a width, piled up beyond all sense, are cut as well.
std::u16string cutToWidth(std::u16string_view text, std::size_t width);

/// Whether the user's locale takes UTF-8.
bool isUtf8Locale();

/// The text in the character set of the user's locale; what that lacks is written in another way or as "?".
std::string inCharacterSetOfLocale(std::string_view utf8);

}  // namespace corvane
