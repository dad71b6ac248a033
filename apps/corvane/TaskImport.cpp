#include "apps/corvane/TaskImport.h"

#include <algorithm>

#include "apps/corvane/CommandText.h"
#include "model/DisplayOrder.h"
#include "model/GTask.h"
#include "model/TaskPlace.h"

namespace corvane {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void setRepeatDetail(GTask& task, const RepeatRule& rule) {
    task.setWeeklyRepeatWeekdays(rule.weekdays);
    task.setMonthlyRepeatWeekdayOrdinal(rule.ordinal, rule.dayKind);
}

void fill(GTask& task, const ImportedTask& imported) {
    task.setName(imported.name);
    if (!imported.notes.empty()) task.setNotes(imported.notes);
    task.setPriority(imported.priority);
    if (imported.dueDate) {
        const RepeatRule& rule = imported.repeat;
        task.setDueDate(imported.dueDate, !imported.hasDueTime, rule.kind, rule.interval);
        setRepeatDetail(task, rule);
        if (imported.alertDate) task.setDateAlert(imported.alertDate);
    }
    task.setCompleted(imported.completed);
    task.setCompletedDate(imported.completedDate);
    task.updateLastModified();
}

// Follows the parents of each task once; a task that is met again on its own way up is in a circle.
void openCircles(std::vector<ImportedTask>& tasks) {
    enum class State : std::uint8_t { kUnknown, kOnTheWay, kSound };
    std::vector<State> states(tasks.size(), State::kUnknown);
    std::vector<std::size_t> way;
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        way.clear();
        std::optional<std::size_t> task = i;
        for (; task && states[*task] == State::kUnknown; task = tasks[*task].parent) {
            states[*task] = State::kOnTheWay;
            way.push_back(*task);
        }
        if (task && states[*task] == State::kOnTheWay) tasks[*task].parent.reset();
        for (const std::size_t sound : way) states[sound] = State::kSound;
    }
}

}  // namespace

std::size_t Import::taskCount() const {
    std::size_t count = 0;
    for (const ImportedList& list : lists) count += list.tasks.size();
    return count;
}

ImportResult importFromData(std::string_view data) {
    if (data.starts_with(kByteOrderMark)) data.remove_prefix(kByteOrderMark.size());
    const std::size_t start = data.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos) return translated("the file is empty");
    const std::string_view rest = data.substr(start);
    if (rest.starts_with('{')) return importFromTakeout(rest);
    if (rest.starts_with("BEGIN:VCALENDAR")) return importFromCalendar(rest);
    return importFromText(data);
}

ImportedList inTreeOrder(ImportedList list) {
    openCircles(list.tasks);
    std::vector<std::vector<std::size_t>> children(list.tasks.size());
    std::vector<std::size_t> waiting;
    for (std::size_t i = list.tasks.size(); i-- > 0;) {
        (list.tasks[i].parent ? children[*list.tasks[i].parent] : waiting).push_back(i);
    }
    ImportedList ordered;
    ordered.name = std::move(list.name);
    std::vector<std::size_t> newPlace(list.tasks.size());
    while (!waiting.empty()) {
        const std::size_t i = waiting.back();
        waiting.pop_back();
        waiting.insert(waiting.end(), children[i].begin(), children[i].end());
        newPlace[i] = ordered.tasks.size();
        ImportedTask& task = list.tasks[i];
        if (task.parent) task.parent = newPlace[*task.parent];
        ordered.tasks.push_back(std::move(task));
    }
    return ordered;
}

bool addImportedTasks(GList& list, const std::vector<ImportedTask>& tasks) {
    const std::size_t first = list.orderedAllTasks().size();
    if (first + tasks.size() > kMaximumSoundOrder) return false;
    // Behind everything else nothing has to make room, so that the order is read once for all of them.
    const std::vector<GTask*> nothingToMove;
    std::vector<GTask*> added;
    for (const ImportedTask& imported : tasks) {
        GTask* parent = imported.parent ? added[*imported.parent] : nullptr;
        const auto position = static_cast<std::int64_t>(first + added.size());
        GTask& task = insertNewTask(list, nothingToMove, position, parent);
        fill(task, imported);
        added.push_back(&task);
    }
    list.resetOrderedAllTasks();
    return true;
}

}  // namespace corvane
