#include "apps/host/CompletionUndo.h"

#include <unordered_set>

namespace corvane {
namespace {

constexpr std::string_view kKeys[] = {
    "completed",       "completedDate",       "dueDate",      "hasDueDate", "hasDueTime",   "alertRepeat",
    "alertRepeatData", "alertRepeatInterval", "alertEnabled", "alertDate",  "lastModified",
};

// Parents may run in a circle in a damaged store.
const GTask& rootOf(const GTask& task) {
    std::unordered_set<const GTask*> seen;
    const GTask* root = &task;
    while (seen.insert(root).second && root->parentTask()) root = root->parentTask();
    return *root;
}

std::vector<const GTask*> wholeTree(const GTask& root) {
    std::vector<const GTask*> tasks = {&root};
    std::unordered_set<const GTask*> seen = {&root};
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        for (const GTask* child : tasks[i]->subTasks()) {
            if (seen.insert(child).second) tasks.push_back(child);
        }
    }
    return tasks;
}

}  // namespace

CompletionUndo CompletionUndo::before(const GTask& task) {
    CompletionUndo undo;
    for (const GTask* noted : wholeTree(rootOf(task))) {
        for (const std::string_view key : kKeys) {
            undo.changes_.push_back({noted->objectID(), key, noted->valueForKey(key), Value()});
        }
    }
    return undo;
}

void CompletionUndo::finish(ManagedObjectContext& context) {
    std::erase_if(changes_, [&](Change& change) {
        const ManagedObject* task = context.existingObjectWithID(change.task);
        if (!task) return true;
        change.after = task->valueForKey(change.key);
        return change.after == change.before;
    });
}

bool CompletionUndo::restore(ManagedObjectContext& context) const {
    // What another process saved since has to be known, or it would be written over.
    ObjectChanges others;
    for (const Change& change : changes_) others.updated.push_back(change.task);
    context.mergeChangesFromContextDidSave(others);
    bool isComplete = true;
    for (const Change& change : changes_) {
        ManagedObject* task = context.existingObjectWithID(change.task);
        if (task && task->valueForKey(change.key) == change.after) {
            task->setValueForKey(change.key, change.before);
        } else {
            isComplete = false;
        }
    }
    return isComplete;
}

}  // namespace corvane
