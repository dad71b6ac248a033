#include "model/DisplayOrder.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <variant>

#include "model/GTask.h"

namespace corvane {
namespace {

GTask* firstSibling(auto first, auto end, const GTask& task, bool uncompletedOnly) {
    const auto sibling = std::find_if(first, end, [&](const GTask* candidate) {
        return candidate->parentTask() == task.parentTask() && !(uncompletedOnly && candidate->completed());
    });
    return sibling == end ? nullptr : *sibling;
}

// A row without a position reads as position 0 and is fetched before all others.
bool hasPosition(const GTask& task) {
    static const PropertyIndex kPosition = *task.entity().indexOfProperty("displayOrder");
    return !std::holds_alternative<std::monostate>(task.viewAt(kPosition));
}

}  // namespace

bool isBefore(const GTask* a, const GTask* b) {
    if (a->displayOrder() != b->displayOrder()) return a->displayOrder() < b->displayOrder();
    if (hasPosition(*a) != hasPosition(*b)) return hasPosition(*b);
    const ManagedObjectID first = a->objectID();
    const ManagedObjectID second = b->objectID();
    return std::tie(first.isTemporary, first.key) < std::tie(second.isTemporary, second.key);
}

void sortByDisplayOrder(std::vector<GTask*>& order) {
    if (!std::ranges::is_sorted(order, isBefore)) std::ranges::sort(order, isBefore);
}

bool isSound(std::span<GTask* const> order) {
    std::int64_t position = 0;
    return std::ranges::all_of(order, [&](const GTask* task) { return task->displayOrder() == position++; });
}

bool isInTreeOrder(std::span<GTask* const> order) {
    if (!isSound(order)) return false;
    std::vector<const GTask*> path;
    for (const GTask* task : order) {
        const GTask* parent = task->parentTask();
        while (!path.empty() && path.back() != parent) path.pop_back();
        if (parent && path.empty()) return false;
        path.push_back(task);
    }
    return true;
}

bool isSoundRun(std::span<GTask* const> order, std::int64_t first, std::span<GTask* const> tasks) {
    if (first < 0 || first + std::ssize(tasks) > std::ssize(order) || !isSound(order)) return false;
    return std::ranges::equal(order.subspan(static_cast<std::size_t>(first), tasks.size()), tasks);
}

void renumber(std::span<GTask* const> order, std::int64_t first, std::int64_t end, std::int64_t offset) {
    const auto size = static_cast<std::int64_t>(order.size());
    for (std::int64_t i = std::max<std::int64_t>(first, 0); i < std::min(end, size); ++i) {
        order[static_cast<std::size_t>(i)]->setDisplayOrder(displayOrderOfPosition(i + offset));
    }
}

GTask* previousSibling(std::span<GTask* const> order, const GTask& task, bool uncompletedOnly) {
    const auto place = std::find(order.rbegin(), order.rend(), &task);
    if (place == order.rend()) return nullptr;
    return firstSibling(std::next(place), order.rend(), task, uncompletedOnly);
}

GTask* nextSibling(std::span<GTask* const> order, const GTask& task) {
    const auto place = std::find(order.begin(), order.end(), &task);
    if (place == order.end()) return nullptr;
    return firstSibling(std::next(place), order.end(), task, kCompletedToo);
}

}  // namespace corvane
