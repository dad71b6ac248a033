// What the parser of command lines says, in the user's language.
#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace corvane {

/// Translates the words that help is made of: "Usage", "Options" and so on. Options and commands take them
/// over when they are added.
void translateHelp(CLI::App& app);

/// The reason of an error in the user's language; one that is not known stays as the parser tells it.
///
/// @param kind     the name of the parser's error class
/// @param english  the parser's own text
std::string translatedReason(std::string_view kind, const std::string& english);

}  // namespace corvane
