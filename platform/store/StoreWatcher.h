// Noticing that another process has committed to a store, without polling.
//
// inotify on the store's directory says when to ask, the store's data version says whether to refresh. Events
// of the shared-memory file are ignored. Where inotify cannot be had, the host asks every few seconds.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Date.h"

namespace corvane {

class StoreWatcher {
  public:
    /// How long a burst of events is waited out.
    static constexpr TimeInterval kQuietTime{0.1};
    /// How often to ask where no events can be had.
    static constexpr TimeInterval kPollInterval{5};

    /// Watches the directory that the file, or what it links to, lies in. The file need not be there yet.
    explicit StoreWatcher(const std::filesystem::path& storeFile);
    ~StoreWatcher();
    StoreWatcher(const StoreWatcher&) = delete;
    StoreWatcher& operator=(const StoreWatcher&) = delete;

    /// Readable when something happened in the directory; none when events cannot be had, or no longer
    /// because the directory is gone or another one has taken its name.
    std::optional<int> fileDescriptor() const;

    /// Takes the waiting events. @return whether one of them may be a commit, or the store file was replaced;
    /// SqliteStore::dataVersion and isReplaced tell which
    bool readEvents();

  private:
    struct DirectoryIdentity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        bool operator==(const DirectoryIdentity&) const = default;
    };
    static DirectoryIdentity identityOf(const std::filesystem::path& directory);
    bool concernsStore(std::string_view name) const;

    int inotify_ = -1;
    bool isWatching_ = false;
    std::filesystem::path directory_;
    DirectoryIdentity identity_;
    std::string name_;
};

}  // namespace corvane
