// Noticing that another process has committed to a store, without polling.
//
// inotify on the store's directory says when to ask, the store's data version says whether to refresh. Events
// of the shared-memory file are ignored. Where inotify cannot be had, the host asks every few seconds.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/foundation/Date.h"

namespace corvane {

class SqliteStore;

class StoreWatcher {
  public:
    /// How long a burst of events is waited out.
    static constexpr TimeInterval kQuietTime{0.1};
    /// How often to ask where no events can be had.
    static constexpr TimeInterval kPollInterval{5};

    explicit StoreWatcher(const std::filesystem::path& storeFile);
    ~StoreWatcher();
    StoreWatcher(const StoreWatcher&) = delete;
    StoreWatcher& operator=(const StoreWatcher&) = delete;

    /// Readable when something happened in the directory; none when events cannot be had.
    std::optional<int> fileDescriptor() const;

    /// Takes the waiting events. @return whether one of them may be a commit, or the store file was replaced
    bool readEvents();

  private:
    int inotify_ = -1;
    std::string name_;
};

}  // namespace corvane
