#include <algorithm>

#include "dates/DateBasics.h"
#include "dates/RepeatArithmetic.h"
#include "model/GTask.h"
#include "model/RepeatAlignment.h"

namespace corvane {
namespace {

/// The next date of the task's rule; none for a kind of rule that is not known.
std::optional<Date> nextDueDate(const GTask& task, Date dueDate) {
    const std::int32_t interval = task.alertRepeatInterval();
    switch (task.alertRepeat()) {
        case kRepeatYearly:
            return dateByAddingYears(dueDate, interval);
        case kRepeatMonthly:
            return dateByAddingMonths(dueDate, interval, task.monthlyRepeatWeekday(),
                                      task.monthlyRepeatWeekdayOrdinal());
        case kRepeatDaily:
            return dateByAddingDays(dueDate, interval);
        case kRepeatWeekly:
        case kRepeatWeeklyOlder:
            return dateByAddingWeeks(dueDate, interval, task.weeklyRepeatWeekdays());
        default:
            return std::nullopt;
    }
}

void moveDueDate(GTask& task, std::optional<Date> date) {
    task.setDueDate(date, !task.hasDueTime(), task.alertRepeat(), task.alertRepeatInterval());
}

using Tasks = std::vector<GTask*>;

void changeCompleted(GTask& task, bool completed, Tasks& changed) {
    task.setCompleted(completed);
    task.updateLastModified();
    changed.push_back(&task);
}

Tasks liveSubTasks(const GTask& task, bool completed) {
    Tasks children = task.subTasks().toVector();
    std::erase_if(children,
                  [&](const GTask* child) { return child->removed() || child->completed() != completed; });
    return children;
}

Tasks changedAroundCompletedTask(const GTask& task) {
    Tasks changed;
    for (GTask* child : liveSubTasks(task, false)) changeCompleted(*child, true, changed);
    return changed;
}

// The children of a task that was reopened are reopened only when all of them are done, so that the ones that
// somebody had ticked off before the rest stay so.
Tasks changedAroundOpenTask(const GTask& task) {
    Tasks changed;
    GTask* parent = task.parentTask();
    if (parent && !parent->removed() && parent->completed()) changeCompleted(*parent, false, changed);
    if (!liveSubTasks(task, false).empty()) return changed;
    for (GTask* child : liveSubTasks(task, true)) changeCompleted(*child, false, changed);
    return changed;
}

}  // namespace

bool isOnItsRule(const GTask& task, Date dueDate) {
    switch (task.alertRepeat()) {
        case kRepeatMonthly:
            return isAlignedWithMonthlyRepeatWeekday(dueDate, task.monthlyRepeatWeekday(),
                                                     task.monthlyRepeatWeekdayOrdinal());
        case kRepeatWeekly:
        case kRepeatWeeklyOlder:
            return isAlignedWithWeeklyRepeatWeekdays(dueDate, task.weeklyRepeatWeekdays());
        default:
            return true;
    }
}

void GTask::progressRepeat() {
    if (alertRepeat() == kNoRepeat || !completed() || !dueDate()) return;
    moveDueDate(*this, nextDueDate(*this, *dueDate()));
    setCompleted(false);
    updateLastModified();
}

// Flags change in one direction only, to open around an open task and to done below a completed one, so that
// every task is visited at most once more.
void GTask::fixCompletedSubtaskingSanity() {
    Tasks waiting = {this};
    while (!waiting.empty()) {
        const GTask& task = *waiting.back();
        waiting.pop_back();
        const Tasks changed =
            task.completed() ? changedAroundCompletedTask(task) : changedAroundOpenTask(task);
        waiting.insert(waiting.end(), changed.rbegin(), changed.rend());
    }
}

void GTask::fixSanity() {
    if (!dueDate() || isOnItsRule(*this, *dueDate())) return;
    moveDueDate(*this, nextDueDate(*this, *dueDate()));
    updateLastModified();
}

}  // namespace corvane
