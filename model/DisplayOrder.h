// Positions of tasks in their list, and the arithmetic of renumbering them.
//
// An order is the list's live tasks by position, as `GList::orderedAllTasks` gives them. It is sound when the
// task at index i has position i. Orders that are not sound, and positions computed from them, are legal
// everywhere: an index beyond the order means no task.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace corvane {

class GTask;

/// The most tasks that a list can hold in order, as positions have 16 bits.
inline constexpr std::size_t kMaximumSoundOrder = 32'768;

/// A position as it is stored: its lower 16 bits.
constexpr std::int16_t displayOrderOfPosition(std::int64_t position) {
    return static_cast<std::int16_t>(position);
}

/// Whether a fetch by position brings `a` first; ties are in store order, new tasks last.
bool isBefore(const GTask* a, const GTask* b);

/// Brings changed positions back into order, as another fetch would.
void sortByDisplayOrder(std::vector<GTask*>& order);

bool isSound(std::span<GTask* const> order);

/// Whether the order is sound and every task stands among the subtasks of its parent: renumbering the list
/// would change nothing.
bool isInTreeOrder(std::span<GTask* const> order);

/// Whether the order is sound and holds these tasks one behind the other from `first` on.
bool isSoundRun(std::span<GTask* const> order, std::int64_t first, std::span<GTask* const> tasks);

/// Sets the task at index i to position i + offset, for i from `first` to before `end`.
void renumber(std::span<GTask* const> order, std::int64_t first, std::int64_t end, std::int64_t offset);

/// The nearest task before or behind `task` with the same parent; null when there is none and when `task` is
/// not in the order.
GTask* previousSibling(std::span<GTask* const> order, const GTask& task, bool uncompletedOnly);
GTask* nextSibling(std::span<GTask* const> order, const GTask& task);

}  // namespace corvane
