// Takes the tags of a text out, each tag text literally and everywhere.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The text with its tags replaced: by nothing when one is a plain opening or closing "a", "span", "strong"
/// or "em" tag, by a blank otherwise.
///
/// The tag texts are those from a "<" to the next ">" as one reads on from the start; an unterminated last
/// one counts as if ">" followed. In the order in which they first occur, each is replaced wherever the
/// result holds it at that moment. The order matters when one tag text ends with another: "<b>" replaced
/// before "<a<b>" leaves
/// "<a " behind, which a later tag text may hold together with what follows it.
///
/// Time and memory follow the length of the text, not that times the number of tags.
std::u16string stringByReplacingTags(std::u16string_view text);

}  // namespace corvane
