// Conversion between the core's UTF-16 texts and the UTF-8 of files, SQLite and terminals.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// UTF-16 of a UTF-8 text; each ill-formed sequence becomes U+FFFD.
std::u16string textFromUtf8(std::string_view utf8);

/// UTF-8 of a UTF-16 text; a lone surrogate becomes U+FFFD.
std::string utf8FromText(std::u16string_view text);

}  // namespace corvane
