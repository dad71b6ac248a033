#include "apps/corvane/TaskListing.h"

#include "apps/corvane/LastListing.h"
#include "apps/corvane/StoreNames.h"
#include "apps/host/RepeatWords.h"
#include "apps/host/TaskDescription.h"
#include "platform/foundation/Text.h"
#include "widget/PriorityBands.h"

namespace corvane {
namespace {

constexpr std::size_t kNumberWidth = 4;

std::string details(const GTask& task) {
    std::string text;
    const std::u16string due = dueInWords(task);
    if (!due.empty()) text += "  " + shownText(due);
    if (task.alertRepeat() != kNoRepeat) text += "  (" + shownText(repeatInWords(repeatOfTask(task))) + ")";
    if (bandOfPriority(task.priority()) != PriorityBand::kNone) {
        text += "  " + shownText(priorityInWords(task.priority()));
    }
    return text;
}

}  // namespace

void TaskListing::addHeading(const std::string& heading) {
    if (!lines_.empty()) lines_ += "\n";
    lines_ += style_.bold(heading) + "\n";
}

void TaskListing::add(const ListedTask& entry) {
    identifiers_.push_back(data_.viewContext().uriRepresentation(*entry.task));
    if (program_.options.json) {
        json_.push_back(taskJson(*entry.task));
    } else {
        addLine(entry);
    }
}

void TaskListing::addLine(const ListedTask& entry) {
    const GTask& task = *entry.task;
    const std::string number = std::to_string(identifiers_.size());
    lines_ += std::string(number.size() < kNumberWidth ? kNumberWidth - number.size() : 0, ' ') + number +
              " " + std::string(2 * entry.depth, ' ') + (task.completed() ? "[x] " : "[ ] ") +
              shownName(task.name()) + style_.faint(details(task)) + "\n";
}

void TaskListing::print(const std::string& whenEmpty) {
    if (program_.options.json) {
        program_.printData(jsonText(json_));
    } else {
        program_.print(identifiers_.empty() ? whenEmpty + "\n" : lines_);
    }
    LastListing::remember(identifiers_);
}

}  // namespace corvane
