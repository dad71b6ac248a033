#include "apps/host/TaskDescription.h"

#include "apps/host/AlertWords.h"
#include "apps/host/RepeatWords.h"
#include "dates/DateTexts.h"
#include "dates/RelativeDayTexts.h"
#include "model/GList.h"
#include "model/GUser.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "widget/PriorityBands.h"

namespace corvane {
namespace {

std::u16string nameOr(std::optional<std::u16string_view> name, const char* fallback) {
    return name && !name->empty() ? std::u16string(*name) : localizedString(fallback);
}

std::u16string priorityInFull(std::int32_t priority) {
    return stringWithFormat(localizedString("%1$@ (%2$@)"),
                            {priorityWord(priority), textFromUtf8(std::to_string(priority))});
}

std::u16string subTasksInWords(const GTask& task) {
    return textFromUtf8(std::to_string(task.countTotalSubTasks()));
}

class Fields {
  public:
    void add(const char* label, std::u16string text) {
        if (!text.empty()) fields_.push_back({localizedString(label), std::move(text)});
    }
    std::vector<TaskField> take() { return std::move(fields_); }

  private:
    std::vector<TaskField> fields_;
};

void addState(Fields& fields, const GTask& task) {
    if (!task.completed()) return;
    const std::optional<Date> date = task.completedDate();
    fields.add(textKey("Done"), date ? stringOfDateTime(*date) : localizedString("yes"));
}

}  // namespace

std::u16string priorityWord(std::int32_t priority) {
    constexpr const char* kWords[] = {textKey("none"), textKey("low"), textKey("medium"), textKey("high")};
    return localizedString(kWords[static_cast<std::size_t>(bandOfPriority(priority))]);
}

std::u16string priorityInWords(std::int32_t priority) {
    constexpr const char* kWords[] = {textKey("no priority"), textKey("low priority"),
                                      textKey("medium priority"), textKey("high priority")};
    return localizedString(kWords[static_cast<std::size_t>(bandOfPriority(priority))]);
}

std::u16string dueInWords(const GTask& task) {
    const std::optional<Date> due = task.dueDate();
    return due ? dueInWords(*due, task.hasDueTime()) : std::u16string();
}

std::u16string dueInWords(Date due, bool hasTime) {
    const std::u16string relative = stringOfDaysLeftSinceDate(due, now(), hasTime);
    const std::int32_t days = daysLeftSinceDate(due, now());
    if (days >= 0 && days <= 1) return relative;
    const std::u16string date = hasTime ? stringOfDateTime(due) : stringOfDate(due);
    return stringWithFormat(localizedString("%1$@ (%2$@)"), {date, relative});
}

std::u16string placeInWords(const GTask& task) {
    const GList* list = task.list();
    return list ? placeInWords(*list) : localizedString("no list");
}

std::u16string placeInWords(const GList& list) {
    const std::u16string name = nameOr(list.name(), textKey("a list without a name"));
    const GUser* account = list.user();
    if (!account) return name;
    return stringWithFormat(localizedString("%1$@ (%2$@)"),
                            {name, nameOr(account->name(), textKey("an account without a name"))});
}

std::u16string placeAlertInWords(const GTask& task) {
    if (task.regionAlert() == 0) return {};
    return nameOr(task.regionDescription(), textKey("a place"));
}

std::vector<TaskField> fieldsOfTask(const GTask& task) {
    Fields fields;
    addState(fields, task);
    fields.add(textKey("Due"), dueInWords(task));
    if (task.alertRepeat() != kNoRepeat) fields.add(textKey("Repeat"), repeatInWords(repeatOfTask(task)));
    if (task.alertEnabled() && task.alertDate()) {
        fields.add(textKey("Alert"), alertInWords(*task.alertDate(), task.dueDate()));
    }
    if (task.priority() != 0) fields.add(textKey("Priority"), priorityInFull(task.priority()));
    fields.add(textKey("List"), placeInWords(task));
    if (const GTask* parent = task.parentTask())
        fields.add(textKey("Below"), nameOr(parent->name(), textKey("untitled")));
    if (task.hasSubtasks()) fields.add(textKey("Subtasks"), subTasksInWords(task));
    fields.add(textKey("Place alert"), placeAlertInWords(task));
    if (task.notes()) fields.add(textKey("Notes"), std::u16string(*task.notes()));
    return fields.take();
}

}  // namespace corvane
