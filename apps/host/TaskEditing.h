// What a user's edit of a task does beyond the model's own operations: completion dates, modification stamps,
// repairs of what the edit unsettles, and a way back.
//
// Nothing here saves.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "apps/host/CompletionUndo.h"
#include "apps/host/DateWords.h"
#include "apps/host/RepeatWords.h"
#include "model/GTask.h"

namespace corvane {

struct CompletionResult {
    bool isChanged = false;           ///< false: the task was so already
    std::optional<Date> nextDueDate;  ///< of a repeating task, which is open again
    std::size_t otherTasks = 0;       ///< parents and subtasks whose completion changed as well
    CompletionUndo undo;
};

/// Completes a task and its open subtasks. A repeating task with a due date moves on instead, one step, and
/// its subtasks begin anew.
CompletionResult completeTask(GTask& task);
/// Opens a completed task, its completed ancestors, and its subtasks where all of them are done.
CompletionResult reopenTask(GTask& task);

/// Moves the due day to tomorrow; time of day and rule stay, the alert goes along. A task without a due date
/// becomes due tomorrow.
CompletionUndo moveToTomorrow(GTask& task);

/// Gives a due date, or takes it and the alert away. A date off the task's weekly or monthly rule moves onto
/// the rule.
void setDue(GTask& task, const std::optional<DateFromWords>& due);

/// Gives a rule. A repeating task needs a due date: without one, the first is today's or the rule's next day.
void setRepeat(GTask& task, const RepeatRule& rule);

void setAlert(GTask& task, std::optional<Date> alert);

/// A title as people type it: one line, without blanks at its ends; empty where nothing is left.
std::u16string titleFromText(std::u16string_view text);

/// Moves a task with its tree, places as for GTask::moveToList, neither of them in the task's own tree.
/// @return the task at its new place: a copy where the list changed
GTask& moveTask(GTask& task, GList& list, GTask* parent, GTask* previous);

}  // namespace corvane
