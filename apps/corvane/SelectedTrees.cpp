#include "apps/corvane/SelectedTrees.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "model/DisplayOrder.h"

namespace corvane {
namespace {

std::vector<GTask*> byListAndPosition(std::span<GTask* const> tasks, std::span<GList* const> lists) {
    std::unordered_map<const GList*, std::size_t> places;
    for (const GList* list : lists) places.emplace(list, places.size());
    const auto placeOf = [&](const GTask* task) {
        const auto found = places.find(task->list());
        return found == places.end() ? places.size() : found->second;
    };
    std::vector<GTask*> sorted(tasks.begin(), tasks.end());
    std::ranges::stable_sort(sorted, [&](const GTask* a, const GTask* b) {
        const std::size_t placeOfA = placeOf(a);
        const std::size_t placeOfB = placeOf(b);
        return placeOfA != placeOfB ? placeOfA < placeOfB : isBefore(a, b);
    });
    return sorted;
}

class Trees {
  public:
    explicit Trees(const std::vector<GTask*>& tasks) {
        const std::unordered_set<const GTask*> selected(tasks.begin(), tasks.end());
        for (GTask* task : tasks) {
            GTask* parent = task->parentTask();
            (selected.contains(parent) ? children_[parent] : roots_).push_back(task);
        }
        for (GTask* root : roots_) walk(root);
        // Parents that run in a circle have no root above them; the first of them opens it.
        for (GTask* task : tasks) walk(task);
    }
    std::vector<ExportedTask> take() { return std::move(entries_); }

  private:
    void walk(GTask* root) {
        std::vector<ExportedTask> waiting = {
            {root, 0}
        };
        while (!waiting.empty()) {
            const ExportedTask entry = waiting.back();
            waiting.pop_back();
            if (!seen_.insert(entry.task).second) continue;
            entries_.push_back(entry);
            const std::vector<GTask*>& children = children_[entry.task];
            for (auto child = children.rbegin(); child != children.rend(); ++child) {
                waiting.push_back({*child, entry.depth + 1});
            }
        }
    }

    std::vector<GTask*> roots_;
    std::unordered_map<const GTask*, std::vector<GTask*>> children_;
    std::unordered_set<const GTask*> seen_;
    std::vector<ExportedTask> entries_;
};

}  // namespace

std::vector<ExportedTask> selectedTrees(std::span<GTask* const> tasks, std::span<GList* const> lists) {
    return Trees(byListAndPosition(tasks, lists)).take();
}

}  // namespace corvane
