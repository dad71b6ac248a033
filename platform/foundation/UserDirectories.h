// The user's directories by the XDG base directories and XDG user directories.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane {

/// A variable of the process's environment; none when it is unset or empty.
std::optional<std::string> processVariable(const char* name);

/// $HOME, else the directory of the user database, else "/".
std::filesystem::path homeDirectory();

/// ${XDG_DATA_HOME:-~/.local/share}; a relative value is ignored.
std::filesystem::path userDataDirectory();
/// ${XDG_CONFIG_HOME:-~/.config}; a relative value is ignored.
std::filesystem::path userConfigDirectory();
/// ${XDG_STATE_HOME:-~/.local/state}; a relative value is ignored.
std::filesystem::path userStateDirectory();

/// XDG_DOCUMENTS_DIR of user-dirs.dirs in the configuration directory, else ~/Documents.
std::filesystem::path userDocumentsDirectory();

/// Makes a directory and its missing parents with the owner's rights only.
/// @return whether the directory is there at the end
bool makePrivateDirectories(const std::filesystem::path& directory);

}  // namespace corvane
