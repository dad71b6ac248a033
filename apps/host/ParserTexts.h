// What the parser of command lines says, in the user's language.
#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace corvane {

/// Translates the words that help is made of: "Usage", "Options" and so on. Options and commands take them
/// over when they are added.
void translateHelp(CLI::App& app);

/// The reason of an error in the user's language; one that is not known stays as the parser tells it.
std::string translatedReason(const CLI::ParseError& error);

}  // namespace corvane
