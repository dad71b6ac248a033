// The main queue: blocks that run later, in the order of their times, on the program's one thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/foundation/Date.h"

namespace corvane {

class MainQueue {
  public:
    using Block = std::function<void()>;

    /// Runs `block` once, `delay` from now (at most 20 days); blocks of equal times run in the order given.
    void after(TimeInterval delay, Block block);

    /// How long until the next block is due; zero when one is due already, none when nothing waits.
    std::optional<TimeInterval> timeUntilNextBlock() const;

    /// Runs what is due, blocks included that those blocks add without delay. @return how many ran
    int runDueBlocks();

    /// Runs everything that waits, in order and without waiting, new blocks included. Ends after a bounded
    /// number of blocks when they keep adding themselves.
    void drain();

    /// Moves this queue's time on by hand (at most 20 days) and runs what falls due. Queue time follows the
    /// steady clock until the first call.
    void advance(TimeInterval interval);

    /// Called whenever a block is added: a host arms its own timer there.
    std::function<void()> onBlockAdded;

  private:
    /// Whole nanoseconds, so that steps by hand add up exactly.
    using QueueTime = std::chrono::nanoseconds;

    struct Entry {
        QueueTime due;
        std::uint64_t sequence;
        Block block;

        bool runsAfter(const Entry& other) const;
    };
    QueueTime now() const;
    bool runNext(std::optional<QueueTime> until);

    std::vector<Entry> entries_;  ///< a heap, the earliest first
    std::uint64_t nextSequence_ = 0;
    std::optional<QueueTime> manualNow_;
};

}  // namespace corvane
