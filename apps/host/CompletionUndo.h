// Taking back an edit of a task and of the tasks around it.
#pragma once

#include <string_view>
#include <vector>

#include "model/GTask.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// The completion, dates, alert, repeat rule and modification stamp of a task's whole tree, as they were.
/// Objects may come and go meanwhile; only identities are kept.
class CompletionUndo {
  public:
    /// Nothing to take back.
    CompletionUndo() = default;
    /// Notes the tree of a saved task before an edit.
    static CompletionUndo before(const GTask& task);

    /// Leaves what the edit changed; call it when the edit is done and before anything else changes.
    void finish(ManagedObjectContext& context);
    bool isEmpty() const { return changes_.empty(); }

    /// Brings the values back, without saving. A value that was changed again since, and a task that has
    /// gone, stay as they are.
    /// @return whether everything is as it was before
    bool restore(ManagedObjectContext& context) const;

  private:
    struct Change {
        ManagedObjectID task;
        std::string_view key;  ///< of the entity's property table
        Value before;
        Value after;
    };
    std::vector<Change> changes_;
};

}  // namespace corvane
