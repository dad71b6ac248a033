#include "model/TaskTree.h"

#include <algorithm>
#include <iterator>

#include "model/DisplayOrder.h"

namespace corvane {

std::vector<GTask*> liveSubTasksInOrder(const GTask& task) {
    std::vector<GTask*> children;
    for (GTask* child : task.subTasks()) {
        if (!child->removed()) children.push_back(child);
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
