#include "platform/foundation/UserDirectories.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>

#include <cstdlib>
#include <fstream>
#include <string_view>

namespace corvane {
namespace {

std::filesystem::path baseDirectory(const char* variable, const char* belowHome) {
    const std::optional<std::string> value = processVariable(variable);
    if (value && std::filesystem::path(*value).is_absolute()) return *value;
    return homeDirectory() / belowHome;
}

// Undoes the shell quoting that xdg-user-dirs-update writes inside double quotes.
std::string withoutBackslashes(std::string_view quoted) {
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] == '\\' && i + 1 < quoted.size()) ++i;
        text.push_back(quoted[i]);
    }
    return text;
}

// The directory of one line, `XDG_DOCUMENTS_DIR="$HOME/Documents"` or with an absolute path; none for any
// other line.
std::optional<std::filesystem::path> documentsDirectoryOfLine(std::string_view line) {
    constexpr std::string_view kName = "XDG_DOCUMENTS_DIR=\"";
    constexpr std::string_view kHome = "$HOME";
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with(kName)) return std::nullopt;
    line.remove_prefix(kName.size());
    const std::size_t end = line.rfind('"');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view value = line.substr(0, end);
    if (value == kHome) return homeDirectory();
    if (value.starts_with("$HOME/")) return homeDirectory() / withoutBackslashes(value.substr(6));
    if (value.starts_with('/')) return withoutBackslashes(value);
    return std::nullopt;
}

}  // namespace

std::optional<std::string> processVariable(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') return std::nullopt;
    return value;
}

std::filesystem::path homeDirectory() {
    if (const std::optional<std::string> home = processVariable("HOME")) return *home;
    const passwd* entry = getpwuid(getuid());
    return entry != nullptr && entry->pw_dir != nullptr ? entry->pw_dir : "/";
}

std::filesystem::path userDataDirectory() { return baseDirectory("XDG_DATA_HOME", ".local/share"); }

std::filesystem::path userConfigDirectory() { return baseDirectory("XDG_CONFIG_HOME", ".config"); }

std::filesystem::path userStateDirectory() { return baseDirectory("XDG_STATE_HOME", ".local/state"); }

std::filesystem::path userDocumentsDirectory() {
    std::optional<std::filesystem::path> documents;
    std::ifstream file(userConfigDirectory() / "user-dirs.dirs");
    for (std::string line; std::getline(file, line);) {
        // As in a shell, the last line wins.
        if (const auto ofLine = documentsDirectoryOfLine(line)) documents = ofLine;
    }
    return documents.value_or(homeDirectory() / "Documents");
}

bool makePrivateDirectories(const std::filesystem::path& directory) {
    std::error_code error;
    if (std::filesystem::is_directory(directory, error)) return true;
    const std::filesystem::path parent = directory.parent_path();
    if (parent.empty() || parent == directory || !makePrivateDirectories(parent)) return false;
    mkdir(directory.c_str(), S_IRWXU);  // another process may have been quicker
    return std::filesystem::is_directory(directory, error);
}

}  // namespace corvane
