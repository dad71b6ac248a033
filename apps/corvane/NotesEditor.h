// The user's editor on a text.
#pragma once

#include <optional>
#include <string>

namespace corvane {

/// Opens $VISUAL, else $EDITOR, else "vi" on the text in a private temporary file and waits. A setting with
/// words ("code --wait") is run as words, one with characters of the shell by the shell.
/// @return the text afterwards, without its last line break; none when it is as it was
/// @throws CommandFailure when there is no editor or it failed; the text is then as it was
std::optional<std::string> editedText(const std::string& text);

}  // namespace corvane
