// What the parser of the command line says, in the user's language.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The reason of an error in the user's language; one that is not known stays as the parser tells it.
///
/// @param kind     the name of the parser's error class
/// @param english  the parser's own text
std::string translatedReason(std::string_view kind, const std::string& english);

}  // namespace corvane
