// The core's main queue in Qt's event loop.
#pragma once

#include <memory>

#include <QTimer>

#include "platform/foundation/MainQueue.h"

namespace corvane {

/// Runs the blocks of the environment's main queue when they are due; nothing runs while none waits.
class MainQueueBridge {
  public:
    MainQueueBridge();
    ~MainQueueBridge();
    MainQueueBridge(const MainQueueBridge&) = delete;
    MainQueueBridge& operator=(const MainQueueBridge&) = delete;

  private:
    void arm();

    std::shared_ptr<MainQueue> queue_;
    QTimer timer_;
};

}  // namespace corvane
