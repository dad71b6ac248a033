#include "platform/foundation/FileContents.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
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
    return fsync(descriptor) == 0 ? std::error_code() : lastError();
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

std::error_code writeFileAtomically(const std::filesystem::path& file,
                                    std::span<const std::uint8_t> contents) {
    std::error_code error;
    const bool isLink = std::filesystem::is_symlink(file, error);
    const std::filesystem::path target = isLink ? std::filesystem::canonical(file, error) : file;
    if (isLink && error) return error;
    const std::filesystem::path directory = target.parent_path();
    std::string temporary = (directory / ("." + target.filename().string() + ".XXXXXX")).string();
    const FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor) return lastError();
    error = writeAll(descriptor.get(), contents);
    if (!error && std::rename(temporary.c_str(), target.c_str()) != 0) error = lastError();
    if (error) {
        unlink(temporary.c_str());
    } else {
        synchronise(directory);  // a file system that cannot do that has renamed all the same
    }
    return error;
}

bool synchronise(const std::filesystem::path& path) {
    const FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return descriptor && fsync(descriptor.get()) == 0;
}

}  // namespace corvane
