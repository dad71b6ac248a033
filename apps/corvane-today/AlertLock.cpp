#include "apps/corvane-today/AlertLock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <functional>
#include <limits>

#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

// One file for all stores: each has a byte of its own, far beyond the file's end.
off_t byteOf(const std::string& store) {
    return static_cast<off_t>(std::hash<std::string>()(store) &
                              std::size_t{std::numeric_limits<std::int32_t>::max()});
}

}  // namespace

AlertLock::AlertLock(const std::string& store) {
    const auto directory = userStateDirectory() / "corvane";
    if (!makePrivateDirectories(directory)) return;
    file_ = FileDescriptor(open((directory / "alerts.lock").c_str(),
                                O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file_) return;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = byteOf(store);
    lock.l_len = 1;
    const bool isTaken = fcntl(file_.get(), F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES);
    isHeld_ = !isTaken;
}

}  // namespace corvane
