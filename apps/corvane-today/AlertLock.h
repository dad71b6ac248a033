// Which of several programs gives the alerts of a store: the one that came first, as long as it runs.
#pragma once

#include <string>

#include "platform/foundation/FileDescriptor.h"

namespace corvane {

class AlertLock {
  public:
    /// Tries to become the one.
    /// @param store  the store's identifier
    explicit AlertLock(const std::string& store);

    /// Also where no lock can be had at all: alerts that come twice are better than none.
    bool isHeld() const { return isHeld_; }

  private:
    FileDescriptor file_;
    bool isHeld_ = true;
};

}  // namespace corvane
