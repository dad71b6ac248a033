#include "apps/corvane-today/Autostart.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <sstream>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

#include "platform/foundation/FileContents.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

std::filesystem::path entryFile() {
    return userConfigDirectory() / "autostart" / "com.velmor.CorvaneToday.desktop";
}

// The program may stand anywhere, also where blanks and quotes are in its path (freedesktop.org
// desktop entries, "The Exec key").
std::string quotedArgument(const std::string& argument) {
    std::string quoted = "\"";
    for (const char c : argument) {
        if (c == '\\') quoted += "\\\\\\";
        if (c == '"' || c == '`' || c == '$') quoted += "\\\\";
        quoted += c;
        if (c == '%') quoted += c;
    }
    return quoted + "\"";
}

std::string programFile() {
    std::error_code error;
    const auto file = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "corvane-today" : file.string();
}

std::string entryText() {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Corvane Today\n"
           "Icon=com.velmor.CorvaneToday\n"
           "Exec=" +
           quotedArgument(programFile()) +
           " --background\n"
           "X-GNOME-Autostart-enabled=true\n";
}

std::string because(const char* sentence, const std::filesystem::path& file, const std::error_code& error) {
    return localizedUtf8(sentence, {textFromUtf8(file.string()), textFromUtf8(error.message())});
}

}  // namespace

// Desktops write their own keys into an entry that was switched off in their settings.
bool isAutostarted() {
    const std::filesystem::path file = entryFile();
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return false;
    constexpr std::size_t kMostBytes = 100'000;
    const auto contents = contentsOfFile(file, kMostBytes);
    const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&contents);
    if (!bytes) return false;
    std::istringstream lines(std::string(bytes->begin(), bytes->end()));
    for (std::string line; std::getline(lines, line);) {
        std::erase_if(line, [](char c) { return c == ' ' || c == '\r'; });
        if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false") return false;
    }
    return true;
}

std::optional<std::string> setAutostarted(bool isAutostarted) {
    const std::filesystem::path file = entryFile();
    std::error_code error;
    if (!isAutostarted) {
        std::filesystem::remove(file, error);
        if (error) return because(textKey("cannot remove %1$@: %2$@"), file, error);
        return std::nullopt;
    }
    if (!makePrivateDirectories(file.parent_path())) {
        return localizedUtf8("the folder %@ cannot be made", {textFromUtf8(file.parent_path().string())});
    }
    const std::string text = entryText();
    error = writeFileAtomically(file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                                FileAccess::kOwnerOnly);
    if (error) return because(textKey("\"%1$@\" could not be written: %2$@"), file, error);
    return std::nullopt;
}

}  // namespace corvane
