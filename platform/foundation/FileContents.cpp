#include "platform/foundation/FileContents.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <random>
#include <string>

#include "platform/foundation/FileDescriptor.h"

namespace corvane {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

std::error_code writeAll(int descriptor, std::span<const std::uint8_t> contents) {
    while (!contents.empty()) {
        const ssize_t count = write(descriptor, contents.data(), contents.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return lastError();
        contents = contents.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

// What the name stands for behind all links. None when it is a descriptor of a process, such as /dev/stdout:
// the file behind it is open elsewhere, perhaps in the middle.
std::variant<std::optional<std::filesystem::path>, std::error_code> targetOf(std::filesystem::path file) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(file, error); ++links) {
        const auto directory = std::filesystem::canonical(file.parent_path() / ".", error);
        if (error) return error;
        if (directory.string().starts_with("/proc/")) return std::nullopt;
        if (links == kMostLinks) return std::make_error_code(std::errc::too_many_symbolic_link_levels);
        file = directory / std::filesystem::read_symlink(file, error);
        if (error) return error;
    }
    return file;
}

std::error_code writeInto(const std::filesystem::path& file, std::span<const std::uint8_t> contents) {
    const FileDescriptor descriptor(open(file.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY));
    return descriptor ? writeAll(descriptor.get(), contents) : lastError();
}

struct TemporaryFile {
    std::string path;
    FileDescriptor descriptor;
};

TemporaryFile makeTemporaryBeside(const std::filesystem::path& file, mode_t mode) {
    constexpr int kAttempts = 100;
    std::random_device random;
    TemporaryFile temporary;
    for (int i = 0; i < kAttempts && !temporary.descriptor; ++i) {
        const std::string name = "." + file.filename().string() + "." + std::to_string(random() % 1'000'000);
        temporary.path = (file.parent_path() / name).string();
        temporary.descriptor =
            FileDescriptor(open(temporary.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (!temporary.descriptor && errno != EEXIST) break;
    }
    return temporary;
}

// Owner and group as far as the user may give them away; the mode last, as a new owner takes bits of it.
std::error_code takeAttributes(int descriptor, const struct stat& attributes) {
    constexpr auto kAsItIs = static_cast<uid_t>(-1);
    static_cast<void>(fchown(descriptor, kAsItIs, attributes.st_gid) == 0);
    static_cast<void>(fchown(descriptor, attributes.st_uid, kAsItIs) == 0);
    return fchmod(descriptor, attributes.st_mode & 0777) == 0 ? std::error_code() : lastError();
}

std::error_code replace(const std::filesystem::path& target, std::span<const std::uint8_t> contents,
                        mode_t mode, const struct stat* attributes) {
    const TemporaryFile temporary = makeTemporaryBeside(target, mode);
    if (!temporary.descriptor) return lastError();
    std::error_code error =
        attributes ? takeAttributes(temporary.descriptor.get(), *attributes) : std::error_code();
    if (!error) error = writeAll(temporary.descriptor.get(), contents);
    if (!error && fsync(temporary.descriptor.get()) != 0) error = lastError();
    if (!error && std::rename(temporary.path.c_str(), target.c_str()) != 0) error = lastError();
    if (error) {
        unlink(temporary.path.c_str());
    } else {
        synchronise(target.parent_path() /
                    ".");  // a file system that cannot do that has renamed all the same
    }
    return error;
}

}  // namespace

std::variant<std::vector<std::uint8_t>, std::error_code> contentsOfFile(const std::filesystem::path& file,
                                                                        std::size_t maximumSize) {
    // Non-blocking, so that a pipe in the file's place cannot hang the program.
    const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor) return lastError();
    struct stat attributes = {};
    if (fstat(descriptor.get(), &attributes) != 0) return lastError();
    if (!S_ISREG(attributes.st_mode)) return std::make_error_code(std::errc::invalid_argument);
    std::vector<std::uint8_t> contents;
    for (;;) {
        constexpr std::size_t kChunk = 65'536;
        const std::size_t size = contents.size();
        contents.resize(size + kChunk);
        const ssize_t count = read(descriptor.get(), contents.data() + size, kChunk);
        if (count < 0 && errno != EINTR) return lastError();
        contents.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (contents.size() > maximumSize) return std::make_error_code(std::errc::file_too_large);
        if (count == 0) return contents;
    }
}

std::error_code writeFileAtomically(const std::filesystem::path& file, std::span<const std::uint8_t> contents,
                                    FileAccess access) {
    const auto resolved = targetOf(file);
    if (const auto* error = std::get_if<std::error_code>(&resolved)) return *error;
    const auto& target = std::get<0>(resolved);
    if (!target) return writeInto(file, contents);
    constexpr mode_t kOwnerMode = 0600;
    if (access == FileAccess::kOwnerOnly) return replace(*target, contents, kOwnerMode, nullptr);
    constexpr mode_t kUmaskMode = 0666;
    struct stat attributes = {};
    if (stat(target->c_str(), &attributes) != 0) return replace(*target, contents, kUmaskMode, nullptr);
    if (!S_ISREG(attributes.st_mode)) return writeInto(*target, contents);
    if (faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0) return lastError();
    return replace(*target, contents, kOwnerMode, &attributes);
}

bool synchronise(const std::filesystem::path& path) {
    const FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return descriptor && fsync(descriptor.get()) == 0;
}

}  // namespace corvane
