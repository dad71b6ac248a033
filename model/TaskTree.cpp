#include "model/TaskTree.h"

#include <algorithm>
#include <iterator>

#include "model/DisplayOrder.h"
#include "platform/store/Predicate.h"

namespace corvane {

std::vector<GTask*> liveSubTasksInOrder(const GTask& task) {
    // As the fetch judges it: a row that does not say whether it is removed is in no result.
    static const Predicate kLive = fixedPredicate(u"removed == NO");
    std::vector<GTask*> children;
    for (GTask* child : task.subTasks()) {
        if (kLive.evaluate(*child)) children.push_back(child);
    }
    sortByDisplayOrder(children);
    return children;
}

std::vector<TaskInTree> liveTree(GTask& task, const ParentTasks* parentTasks) {
    std::vector<TaskInTree> tree;
    std::vector<TaskInTree> waiting = {
        {&task, 0}
    };
    while (!waiting.empty()) {
        const std::size_t index = tree.size();
        tree.push_back(waiting.back());
        waiting.pop_back();
        GTask& parent = *tree.back().task;
        if (parentTasks && !parentTasks->contains(parent.objectID())) continue;
        std::vector<GTask*> children = liveSubTasksInOrder(parent);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (*child != &task) waiting.push_back({*child, index});
        }
    }
    return tree;
}

std::vector<GTask*> tasksOf(const std::vector<TaskInTree>& tree) {
    std::vector<GTask*> tasks;
    std::ranges::transform(tree, std::back_inserter(tasks), &TaskInTree::task);
    return tasks;
}

}  // namespace corvane
