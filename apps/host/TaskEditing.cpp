#include "apps/host/TaskEditing.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dates/DateBasics.h"
#include "model/TaskTree.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

// The completion of a task's ancestors and descendants, removed ones included.
std::unordered_map<GTask*, bool> completionAround(GTask& task) {
    std::unordered_map<GTask*, bool> completion;
    std::vector<GTask*> waiting = {&task};
    for (GTask* parent = task.parentTask(); parent && !completion.contains(parent);
         parent = parent->parentTask()) {
        completion.emplace(parent, parent->completed());
        for (GTask* child : parent->subTasks()) waiting.push_back(child);
    }
    while (!waiting.empty()) {
        GTask* next = waiting.back();
        waiting.pop_back();
        if (!completion.emplace(next, next->completed()).second) continue;
        for (GTask* child : next->subTasks()) waiting.push_back(child);
    }
    return completion;
}

void setCompletion(GTask& task, bool completed) {
    task.setCompleted(completed);
    task.setCompletedDate(completed ? std::optional(now()) : std::nullopt);
}

// The model leaves the date of completion to its caller, for every task that it completes or opens.
std::size_t dateOthers(const std::unordered_map<GTask*, bool>& before, const GTask& task) {
    std::size_t count = 0;
    for (const auto& [other, completed] : before) {
        if (other == &task || other->completed() == completed) continue;
        setCompletion(*other, other->completed());
        ++count;
    }
    return count;
}

// The rules of completion hold again after the task itself has moved on.
void progress(GTask& task, CompletionResult& result) {
    task.progressRepeat();
    if (task.completed()) return;
    result.nextDueDate = task.dueDate();
    task.fixCompletedSubtaskingSanity();
}

CompletionResult changeCompletion(GTask& task, bool completed) {
    CompletionResult result;
    if (task.completed() == completed) return result;
    result.isChanged = true;
    result.undo = CompletionUndo::before(task);
    const auto before = completionAround(task);
    setCompletion(task, completed);
    task.updateLastModified();
    task.fixCompletedSubtaskingSanity();
    if (completed) progress(task, result);
    result.otherTasks = dateOthers(before, task);
    result.undo.finish(*task.managedObjectContext());
    return result;
}

void stampTree(GTask& task) {
    for (const TaskInTree& entry : liveTree(task)) entry.task->updateLastModified();
}

void changeDue(GTask& task, std::optional<Date> date, bool hasTime) {
    task.setDueDate(date, !hasTime, task.alertRepeat(), task.alertRepeatInterval());
}

}  // namespace

CompletionResult completeTask(GTask& task) { return changeCompletion(task, true); }

CompletionResult reopenTask(GTask& task) { return changeCompletion(task, false); }

CompletionUndo moveToTomorrow(GTask& task) {
    constexpr std::int32_t kTomorrow = 1;
    CompletionUndo undo = CompletionUndo::before(task);
    const Calendar calendar = Calendar::current();
    Date date = dateOfTodayMidnightWithDaysOffset(kTomorrow);
    if (task.dueDate() && task.hasDueTime()) {
        const auto days = calendar.civilDay(date) - calendar.civilDay(*task.dueDate());
        date = calendar.dateByAddingDays(*task.dueDate(), days);
    }
    changeDue(task, date, task.dueDate() && task.hasDueTime());
    task.updateLastModified();
    undo.finish(*task.managedObjectContext());
    return undo;
}

void setDue(GTask& task, const std::optional<DateFromWords>& due) {
    changeDue(task, due ? std::optional(due->date) : std::nullopt, due && due->hasTime);
    task.updateLastModified();
    task.fixSanity();
}

void setRepeat(GTask& task, const RepeatRule& rule) {
    constexpr std::int32_t kToday = 0;
    const bool becomesDue = !task.dueDate() && rule.kind != kNoRepeat;
    const auto due = becomesDue ? std::optional(dateOfTodayMidnightWithDaysOffset(kToday)) : task.dueDate();
    const bool isAllDay = becomesDue || !task.hasDueTime();
    task.setDueDate2(due, isAllDay, rule.kind, rule.interval);
    if (becomesDue) changeDue(task, due, !isAllDay);
    task.setWeeklyRepeatWeekdays(rule.weekdays);
    task.setMonthlyRepeatWeekdayOrdinal(rule.ordinal, rule.dayKind);
    task.updateLastModified();
    task.fixSanity();
}

void setAlert(GTask& task, std::optional<Date> alert) {
    task.setDateAlert(alert);
    task.updateLastModified();
}

std::u16string titleFromText(std::u16string_view text) {
    std::u16string title(text);
    std::ranges::replace_if(
        title, [](char16_t unit) { return unit == u'\n' || unit == u'\r' || unit == u'\t'; }, u' ');
    const std::size_t first = title.find_first_not_of(u' ');
    if (first == title.npos) return {};
    return title.substr(first, title.find_last_not_of(u' ') - first + 1);
}

GTask& moveTask(GTask& task, GList& list, GTask* parent, GTask* previous) {
    const bool changesList = &list != task.list();
    if (changesList) stampTree(task);
    // No previous sibling and a parent that is the own one mean the first place below it.
    GTask& moved = task.moveToList(list, parent, previous);
    if (changesList) {
        stampTree(moved);
    } else {
        moved.updateLastModified();
    }
    return moved;
}

}  // namespace corvane
