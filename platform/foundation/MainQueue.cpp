#include "platform/foundation/MainQueue.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

// How many blocks one call runs beyond those that waited at its start: a block that keeps adding itself must
// not hang the program.
constexpr std::size_t kMaximumAddedBlocks = 100'000;

// Hosts turn a wait into milliseconds of 32 bits or into a timespec; 20 days fit everywhere.
constexpr TimeInterval kMaximumWait{20.0 * 86'400};

std::chrono::nanoseconds boundedWait(TimeInterval wait) {
    const bool isPositive = wait > TimeInterval::zero();  // what is no number counts as none
    const TimeInterval bounded = isPositive ? std::min(wait, kMaximumWait) : TimeInterval::zero();
    return std::chrono::round<std::chrono::nanoseconds>(bounded);
}

}  // namespace

bool MainQueue::Entry::runsAfter(const Entry& other) const {
    if (due != other.due) return due > other.due;
    return sequence > other.sequence;
}

void MainQueue::after(TimeInterval delay, Block block) {
    entries_.push_back({now() + boundedWait(delay), nextSequence_++, std::move(block)});
    std::ranges::push_heap(entries_, [](const Entry& a, const Entry& b) { return a.runsAfter(b); });
    if (onBlockAdded) onBlockAdded();
}

std::optional<TimeInterval> MainQueue::timeUntilNextBlock() const {
    if (entries_.empty()) return std::nullopt;
    return std::max(entries_.front().due - now(), QueueTime::zero());
}

int MainQueue::runDueBlocks() {
    const std::size_t bound = entries_.size() + kMaximumAddedBlocks;
    std::size_t count = 0;
    while (count < bound && runNext(now())) ++count;
    return static_cast<int>(count);
}

void MainQueue::drain() {
    const std::size_t bound = entries_.size() + kMaximumAddedBlocks;
    for (std::size_t count = 0; count < bound && runNext(std::nullopt);) ++count;
}

void MainQueue::advance(TimeInterval interval) {
    manualNow_ = now();
    const QueueTime target = *manualNow_ + boundedWait(interval);
    const std::size_t bound = entries_.size() + kMaximumAddedBlocks;
    for (std::size_t count = 0; count < bound && !entries_.empty(); ++count) {
        const QueueTime due = entries_.front().due;
        if (due > target) break;
        manualNow_ = std::max(*manualNow_, due);
        runNext(due);
    }
    manualNow_ = target;
}

MainQueue::QueueTime MainQueue::now() const {
    return manualNow_ ? *manualNow_ : QueueTime(std::chrono::steady_clock::now().time_since_epoch());
}

bool MainQueue::runNext(std::optional<QueueTime> until) {
    if (entries_.empty() || (until && entries_.front().due > *until)) return false;
    std::ranges::pop_heap(entries_, [](const Entry& a, const Entry& b) { return a.runsAfter(b); });
    const Block block = std::move(entries_.back().block);
    entries_.pop_back();
    block();
    return true;
}

}  // namespace corvane
