// Percent-encoding of texts for URLs (RFC 3986) and its reverse.
//
// An escape is "%" and the two hexadecimal digits of one byte of the UTF-8 form: written in upper case, read
// in both. ASCII letters, digits and "-", ".", "_", "~" always stay as they are.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Also keeps "!", "*", "(" and ")". None for a lone surrogate, which has no UTF-8 form.
std::optional<std::u16string> stringByURLEncodingString(std::u16string_view text);

/// Keeps nothing else. A text with a lone surrogate comes back unchanged.
std::u16string stringByURLEncodingForURI(std::u16string_view text);

/// The same with "+" for a blank: the form of a query's keys and values.
std::u16string stringByURLEncodingStringParameter(std::u16string_view text);

/// Replaces every escape by its byte and reads the bytes as UTF-8; everything else stays, lone surrogates
/// too.
///
/// None when the bytes are not UTF-8, or when two hexadecimal digits do not follow a "%".
std::optional<std::u16string> stringByURLDecodingString(std::u16string_view text);

/// As above after every "+" has become a blank; an escaped plus sign stays one.
std::optional<std::u16string> stringByURLDecodingStringParameter(std::u16string_view text);

}  // namespace corvane
