// A task's fields in words, in the user's language.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/GList.h"
#include "model/GTask.h"

namespace corvane {

/// "none", "low", "medium" or "high", by the bands that the widget marks.
std::u16string priorityWord(std::int32_t priority);
/// "no priority", "low priority", "medium priority" or "high priority".
std::u16string priorityInWords(std::int32_t priority);

/// Day and, where the task has one, time: "Today at 14:00", "Fri, Mar 8, 14:00 (In 3 days)"; empty without a
/// due date.
std::u16string dueInWords(const GTask& task);

/// The same for a date; without a time of day where there is none.
std::u16string dueInWords(Date due, bool hasTime);

/// The place of a list, as below.
std::u16string placeInWords(const GList& list);
/// "Home (anna@example.com)"; a list or account without a name is told as one.
std::u16string placeInWords(const GTask& task);

/// Where the task alerts; empty without a place alert.
std::u16string placeAlertInWords(const GTask& task);

struct TaskField {
    std::u16string label;
    std::u16string text;
};

/// What there is to tell of a task beside its title, in a fixed order; fields without a value are left out.
/// Texts are as stored, line breaks and controls included.
std::vector<TaskField> fieldsOfTask(const GTask& task);

}  // namespace corvane
