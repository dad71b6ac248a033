// The place of a command line at which somebody is typing: what the parser would take there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace corvane {

struct CommandPlace {
    const CLI::App* command = nullptr;   ///< the innermost command named so far
    const CLI::Option* value = nullptr;  ///< takes the word as its value; null when none does
    bool takesCommand = false;           ///< the word may name a command of `command`
    bool takesOption = false;            ///< the word may name an option of `command` or of one above
    std::string fixed;                   ///< what of the word stays in front of the value, like "--list="
    std::string typed;                   ///< the rest of the word
    std::string container;               ///< the value of --container; empty: none was given
};

/// Reads words as the parser does, the last one as still being typed. Unknown options take no value.
CommandPlace commandPlace(const CLI::App& root, const std::vector<std::string>& words);

/// The commands below one that are for people, not only for other programs.
std::vector<const CLI::App*> shownCommands(const CLI::App& command);

}  // namespace corvane
