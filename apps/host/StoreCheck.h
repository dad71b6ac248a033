// Whether a store's content is sound, and the mending of what is not.
//
// The order of tasks, lists and accounts, default lists and accounts, completion of parents and children,
// due dates off their repeat rule, references to nowhere, alerts without a due date. Removed lists and tasks
// wait for synchronisation and are not judged.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/store/ManagedObjectContext.h"

namespace corvane {

enum class FaultKind {
    kReference,   ///< a list without account, a task without list, a parent that is gone, elsewhere or below
    kDueDate,     ///< an alert without a due date, flags that contradict the due date
    kCompletion,  ///< a completed task with an open subtask
    kRepeat,      ///< a due date off its weekly or monthly rule
    kDefault,     ///< several default lists in an account, several default accounts
    kOrder,       ///< positions that are not 0, 1, 2, ... in tree order
};

struct StoreFault {
    FaultKind kind = FaultKind::kReference;
    std::u16string text;  ///< one sentence without a stop; names as stored, controls included
};

/// Why the content cannot be judged, in one line: the file itself is damaged, or its rows cannot be read.
/// None when it can; only then do the operations below tell the truth.
std::optional<std::string> unreadableReason(ManagedObjectContext& context);

/// The faults in the order of the kinds. Changes nothing.
std::vector<StoreFault> checkStore(ManagedObjectContext& context);

/// Mends what checkStore finds, through the model's own operations and without saving. A task or list that
/// lost its place goes to the default list or account; where there is none, it stays as it is.
/// @return what was mended
std::vector<StoreFault> repairStore(ManagedObjectContext& context);

}  // namespace corvane
