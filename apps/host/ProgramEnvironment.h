// What every program of the project takes from its command line into the environment.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane {

struct ProgramOptions {
    std::filesystem::path container;  ///< empty: the environment's default
    std::string now;                  ///< RFC 3339 text that stands in for the clock; empty: the clock
};

/// Makes the user's locale that of the process. Numbers on the command line keep the point, as in scripts.
void useLocaleOfUser();

/// Puts the options in force: locale of the process, container, clock. A container that cannot be had leaves
/// the environment without one; a missing one is not made.
///
/// @return why an option cannot be understood, one line; none when all is well
std::optional<std::string> setUpProgramEnvironment(const ProgramOptions& options);

}  // namespace corvane
