#include "platform/store/StoreWatcher.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <system_error>

namespace corvane {

namespace {

// Writes into the log or the file, and files that come, go or change their name.
constexpr std::uint32_t kEvents = IN_MODIFY | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                  IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

std::filesystem::path resolved(const std::filesystem::path& file) {
    std::error_code failure;
    const std::filesystem::path path = std::filesystem::weakly_canonical(file, failure);
    return failure ? std::filesystem::absolute(file) : path;
}

}  // namespace

StoreWatcher::StoreWatcher(const std::filesystem::path& storeFile)
    : inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (inotify_ < 0) return;
    const std::filesystem::path file = resolved(storeFile);
    name_ = file.filename().string();
    directory_ = file.parent_path();
    identity_ = identityOf(directory_);
    isWatching_ = inotify_add_watch(inotify_, directory_.c_str(), kEvents) >= 0;
}

StoreWatcher::~StoreWatcher() {
    if (inotify_ >= 0) close(inotify_);
}

StoreWatcher::DirectoryIdentity StoreWatcher::identityOf(const std::filesystem::path& directory) {
    struct stat status {};
    if (stat(directory.c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino};
}

// A removed directory gives no event of its own while a file in it is still open, as the store's may be.
std::optional<int> StoreWatcher::fileDescriptor() const {
    return isWatching_ && identityOf(directory_) == identity_ ? std::optional(inotify_) : std::nullopt;
}

bool StoreWatcher::readEvents() {
    bool mayHaveChanged = false;
    alignas(inotify_event) char buffer[16 * 1024];
    for (ssize_t size = 0; (size = read(inotify_, buffer, sizeof buffer)) > 0;) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event;
            std::memcpy(&event, buffer + at, sizeof event);
            const char* name = buffer + at + sizeof event;
            at += static_cast<ssize_t>(sizeof event + event.len);
            // A directory that went or moved away takes the store with it.
            if (event.mask & (IN_IGNORED | IN_MOVE_SELF)) isWatching_ = false;
            const bool isAboutAll = event.mask & (IN_Q_OVERFLOW | IN_IGNORED | IN_MOVE_SELF | IN_DELETE_SELF);
            mayHaveChanged = mayHaveChanged || isAboutAll || (event.len > 0 && concernsStore(name));
        }
    }
    return mayHaveChanged;
}

bool StoreWatcher::concernsStore(std::string_view name) const {
    if (!name.starts_with(name_)) return false;
    const std::string_view suffix = name.substr(name_.size());
    return suffix.empty() || suffix == "-wal" || suffix == "-journal";
}

}  // namespace corvane
