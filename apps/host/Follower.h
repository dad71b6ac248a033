// The moments at which a resident program must refresh the widget: another process has committed, the day or
// a due time has come, somebody set the clock or changed the time zone, the machine has woken up.
//
// Nothing runs between them. One connection stays open meanwhile; the store's directory is watched, and only
// where that cannot be had, or there is no store, the file is asked for every few seconds.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "apps/host/WidgetHost.h"
#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/WallClockTimer.h"
#include "platform/store/StoreWatcher.h"

namespace corvane {

class Follower {
  public:
    /// @param host  outlives the follower
    explicit Follower(WidgetHost& host);

    /// Readable when `takeEvents` is to be called; the same one for the follower's whole life.
    int fileDescriptor() const { return events_.get(); }

    /// Refreshes the host, and from then on waits for the next moment.
    void refresh();

    /// Takes what has happened, without waiting. A burst of commits is waited out first, though never for
    /// long.
    /// @return whether the widget may show something else by now: refresh
    bool takeEvents();

  private:
    using Clock = std::chrono::steady_clock;

    void watchStore();
    void watchTimeZone();
    bool readTimeZoneEvents();
    void waitForWallClock();
    void add(int descriptor);
    void startPause(Clock::duration longest);
    void armPause(Clock::duration duration);
    bool isPauseOver();
    void checkAgainLater();
    bool pollsStore() const;
    bool hasStoreChanged();

    WidgetHost& host_;
    FileDescriptor events_;    ///< all of the following in one (epoll)
    FileDescriptor pause_;     ///< the end of a burst, or the next time to ask
    FileDescriptor timeZone_;  ///< inotify
    WallClockTimer wallClock_;
    std::optional<StoreWatcher> storeWatcher_;
    std::optional<Clock::time_point> burstBegan_;
    std::optional<Clock::duration> checkAgainAfter_;  ///< none: all events have been followed up
    std::optional<std::int64_t> dataVersion_;  ///< as the last refresh saw it; none: there was no store
    std::optional<Date> refreshedAt_;
    bool hasTimeZoneChanged_ = false;
};

}  // namespace corvane
