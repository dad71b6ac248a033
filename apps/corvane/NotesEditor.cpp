#include "apps/corvane/NotesEditor.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <vector>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/Program.h"
#include "platform/foundation/FileContents.h"
#include "platform/foundation/UserDirectories.h"

extern char** environ;

namespace corvane {
namespace {

/// A file that only the user can read, gone at the end.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& text) {
        std::string path = (std::filesystem::temp_directory_path() / "corvane-XXXXXX.txt").string();
        constexpr int kSuffixLength = 4;
        const int descriptor = mkstemps(path.data(), kSuffixLength);
        if (descriptor < 0) throw CommandFailure(translated("no temporary file can be made for the editor"));
        path_ = path;
        const bool isWritten = writeAll(descriptor, text);
        if (close(descriptor) != 0 || !isWritten) {
            std::remove(path_.c_str());
            throw CommandFailure(translated("the temporary file for the editor could not be written"));
        }
    }
    ~TemporaryFile() { std::remove(path_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

    std::string text() const {
        constexpr std::size_t kMostBytes = 64'000'000;
        const auto contents = contentsOfFile(path_, kMostBytes);
        const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&contents);
        if (!bytes) throw CommandFailure(translated("the edited text cannot be read; nothing was changed"));
        return std::string(bytes->begin(), bytes->end());
    }

  private:
    static bool writeAll(int descriptor, std::string_view text) {
        while (!text.empty()) {
            const ssize_t count = write(descriptor, text.data(), text.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            text.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    std::string path_;
};

std::string editorSetting() {
    if (const auto editor = processVariable("VISUAL")) return *editor;
    return processVariable("EDITOR").value_or("vi");
}

std::vector<std::string> commandOf(const std::string& setting, const std::string& file) {
    constexpr const char* kShellCharacters = "'\"\\$`|&;<>()*?[]{}~#=%\n";
    if (setting.find_first_of(kShellCharacters) != setting.npos) {
        return {"/bin/sh", "-c", setting + " \"$1\"", "sh", file};
    }
    std::vector<std::string> words;
    std::istringstream stream(setting);
    for (std::string word; stream >> word;) words.push_back(word);
    words.push_back(file);
    return words;
}

/// The wait status; none when the program cannot be started.
std::optional<int> statusOf(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = -1;
    if (posix_spawnp(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) {
        return std::nullopt;
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) return std::nullopt;
    }
    return status;
}

std::string withoutLastLineBreak(std::string text) {
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

}  // namespace

std::optional<std::string> editedText(const std::string& text) {
    const TemporaryFile file(text.empty() ? text : text + "\n");
    const std::string setting = editorSetting();
    const std::optional<int> status = statusOf(commandOf(setting, file.path()));
    if (!status) throw CommandFailure(translated("the editor \"%@\" cannot be started; set EDITOR", setting));
    if (!WIFEXITED(*status) || WEXITSTATUS(*status) != 0) {
        throw CommandFailure(translated("the editor failed; nothing was changed"));
    }
    std::string edited = withoutLastLineBreak(file.text());
    return edited == text ? std::nullopt : std::optional(std::move(edited));
}

}  // namespace corvane
