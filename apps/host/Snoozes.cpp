#include "apps/host/Snoozes.h"

#include <algorithm>
#include <utility>

#include "model/GList.h"

namespace corvane {
namespace {

constexpr const char* kFileName = "snoozes";
constexpr const char* kUntilKey = "until";
constexpr const char* kDueDateKey = "dueDate";
constexpr const char* kAlertDateKey = "alertDate";

}  // namespace

Snoozes::Snoozes(const std::string& store) : file_(kFileName, store) {
    for (const auto& [taskid, entry] : file_.read()) {
        if (const auto snooze = snoozeOf(entry)) snoozes_[taskid] = *snooze;
    }
}

std::optional<Snoozes::Snooze> Snoozes::snoozeOf(const PropertyList& entry) {
    const std::optional<Date> until = dateInState(entry, kUntilKey);
    if (!until) return std::nullopt;
    return Snooze{*until, dateInState(entry, kDueDateKey), dateInState(entry, kAlertDateKey)};
}

PropertyList Snoozes::listOf(const Snooze& snooze) {
    PropertyList::Dictionary entry = {
        {kUntilKey, stateOfDate(snooze.until)}
    };
    if (snooze.dueDate) entry[kDueDateKey] = stateOfDate(*snooze.dueDate);
    if (snooze.alertDate) entry[kAlertDateKey] = stateOfDate(*snooze.alertDate);
    return {std::move(entry)};
}

bool Snoozes::add(const GTask& task, Date until) {
    const std::string taskid = task.managedObjectContext()->uriRepresentation(task);
    snoozes_[taskid] = {until, task.dueDate(), task.alertDate()};
    return save();
}

void Snoozes::cancel(const std::string& taskid) {
    if (snoozes_.erase(taskid) > 0) save();
}

GTask* Snoozes::taskOf(ManagedObjectContext& context, const std::string& taskid, const Snooze& snooze) {
    auto* task = dynamic_cast<GTask*>(context.objectWithUri(taskid));
    if (!task || task->removed() || task->completed()) return nullptr;
    if (!task->list() || task->list()->removed()) return nullptr;
    return task->dueDate() == snooze.dueDate && task->alertDate() == snooze.alertDate ? task : nullptr;
}

void Snoozes::settle(ManagedObjectContext& context) {
    const std::size_t dropped = std::erase_if(
        snoozes_, [&](const auto& entry) { return !taskOf(context, entry.first, entry.second); });
    if (dropped > 0) save();
}

std::vector<DueReminder> Snoozes::take(ManagedObjectContext& context, Date now) {
    settle(context);
    std::vector<std::pair<Date, std::string>> ended;
    for (const auto& [taskid, snooze] : snoozes_) {
        if (snooze.until <= now) ended.emplace_back(snooze.until, taskid);
    }
    std::ranges::sort(ended);
    std::vector<DueReminder> due;
    for (const auto& [until, taskid] : ended) {
        due.push_back({taskOf(context, taskid, snoozes_[taskid]), until});
        snoozes_.erase(taskid);
    }
    if (!ended.empty()) save();
    return due;
}

std::optional<Date> Snoozes::next() const {
    std::optional<Date> first;
    for (const auto& [taskid, snooze] : snoozes_)
        first = std::min(first.value_or(snooze.until), snooze.until);
    return first;
}

std::optional<Date> Snoozes::until(const std::string& taskid) const {
    const auto found = snoozes_.find(taskid);
    return found == snoozes_.end() ? std::nullopt : std::optional(found->second.until);
}

bool Snoozes::save() const {
    PropertyList::Dictionary entries;
    for (const auto& [taskid, snooze] : snoozes_) entries[taskid] = listOf(snooze);
    return file_.write(std::move(entries));
}

}  // namespace corvane
