#include "apps/corvane-today/RecentActs.h"

#include <algorithm>
#include <utility>

namespace corvane {

using Clock = std::chrono::steady_clock;

RecentActs::RecentActs(QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &RecentActs::removeEnded);
}

void RecentActs::add(RowContent content, RowAct act, std::size_t place) {
    remove(content.taskid);
    acts_.push_back({std::move(content), act, place, Clock::now() + duration_});
    std::ranges::stable_sort(acts_, {}, &RecentAct::place);
    arm();
}

void RecentActs::remove(const std::string& taskid) {
    std::erase_if(acts_, [&taskid](const RecentAct& act) { return act.content.taskid == taskid; });
    arm();
}

void RecentActs::removeEnded() {
    const Clock::time_point time = Clock::now();
    const auto removed = std::erase_if(acts_, [time](const RecentAct& act) { return act.end <= time; });
    arm();
    if (removed > 0) Q_EMIT ended();
}

void RecentActs::arm() {
    if (acts_.empty()) return timer_.stop();
    const auto next = std::ranges::min_element(acts_, {}, &RecentAct::end);
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next->end - Clock::now());
    timer_.start(std::max(wait, std::chrono::milliseconds(0)));
}

}  // namespace corvane
