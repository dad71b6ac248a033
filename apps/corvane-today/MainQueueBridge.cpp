#include "apps/corvane-today/MainQueueBridge.h"

#include <chrono>

#include "platform/foundation/Environment.h"

namespace corvane {

MainQueueBridge::MainQueueBridge() : queue_(Environment::current().mainQueue) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        queue_->runDueBlocks();
        arm();
    });
    queue_->onBlockAdded = [this] { arm(); };
    arm();
}

MainQueueBridge::~MainQueueBridge() { queue_->onBlockAdded = nullptr; }

void MainQueueBridge::arm() {
    const auto wait = queue_->timeUntilNextBlock();
    if (!wait) return timer_.stop();
    timer_.start(std::chrono::ceil<std::chrono::milliseconds>(*wait));
}

}  // namespace corvane
