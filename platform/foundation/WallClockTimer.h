// A timer for a moment of the wall clock. It sees suspend and a set clock, which timers of a duration miss.
#pragma once

#include "platform/foundation/Date.h"
#include "platform/foundation/FileDescriptor.h"

namespace corvane {

class WallClockTimer {
  public:
    enum class Wake {
        kNone,          ///< nothing has happened
        kDue,           ///< the moment has come
        kClockChanged,  ///< somebody set the clock; the timer is to be armed again
    };

    WallClockTimer();

    /// For poll: readable when `read` has something to tell. -1 when the system has no such timer; nothing
    /// wakes then.
    int fd() const { return descriptor_.get(); }

    /// Wakes once at `when`, at once when that is past. Replaces an earlier moment.
    void arm(Date when);
    void disarm();

    /// Takes what has happened since the last call, without waiting.
    Wake read();

  private:
    FileDescriptor descriptor_;
    bool clockChangedWhileArming_ = false;
};

}  // namespace corvane
