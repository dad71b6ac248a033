#include "apps/host/Sentence.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include "apps/host/JoinedWords.h"
#include "apps/host/WritingDirection.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Localization.h"
#include "widget/WidgetImages.h"

namespace corvane {
namespace {

struct PriorityWords {
    const char* mark;
    const char* words;
};
constexpr PriorityWords kPriorityWords[] = {
    {kPriority1Image.name, textKey("low priority")   },
    {kPriority2Image.name, textKey("medium priority")},
    {kPriority3Image.name, textKey("high priority")  },
};

// The plural key has one English form, so that a single task has a key of its own.
std::u16string dueTasks(std::size_t count) {
    if (count == 1) return localizedString("1 task due");
    const auto number = static_cast<std::int64_t>(count);
    return stringWithFormat(localizedString("%d tasks due", number), {number});
}

std::u16string overdueTasks(std::size_t count) {
    const auto number = static_cast<std::int64_t>(count);
    return stringWithFormat(localizedString("%d overdue", number), {number});
}

// "Today at 14:00" as it reads in the middle of a sentence. A word in capitals keeps them.
std::u16string withinSentence(std::u16string text) {
    if (text.size() < 2 || u_isupper(text[1])) return text;
    UErrorCode status = U_ZERO_ERROR;
    char16_t lower[4];
    const std::int32_t length = u_strToLower(lower, static_cast<std::int32_t>(std::size(lower)), text.data(),
                                             1, Locale::current().identifier().c_str(), &status);
    if (U_SUCCESS(status)) text.replace(0, 1, lower, static_cast<std::size_t>(length));
    return text;
}

}  // namespace

std::u16string widgetSentence(const WidgetSnapshot& widget, std::size_t overdueCount) {
    if (widget.dueCount == 0) return widget.noMoreTasks;
    const std::u16string counts = dueCountText(widget.dueCount, overdueCount);
    if (widget.rows.empty()) return stringWithFormat(localizedString("%@."), {counts});
    return stringWithFormat(localizedString("%@. First: %@."), {counts, rowInWords(widget.rows.front())});
}

std::u16string dueCountText(std::size_t dueCount, std::size_t overdueCount) {
    if (overdueCount == 0) return dueTasks(dueCount);
    const std::u16string counts[] = {dueTasks(dueCount), overdueTasks(overdueCount)};
    return joinedWords(counts);
}

std::u16string rowInWords(const WidgetRow& row) {
    std::vector<std::u16string> words = {isolatedText(row.title.value_or(std::u16string()))};
    if (row.time) words.push_back(withinSentence(*row.time));
    if (const auto priority = priorityInWords(row.priority)) words.push_back(*priority);
    return joinedWords(words);
}

std::optional<std::u16string> priorityInWords(const std::optional<std::string>& mark) {
    const auto words = std::ranges::find_if(
        kPriorityWords, [&mark](const PriorityWords& candidate) { return mark == candidate.mark; });
    if (words == std::end(kPriorityWords)) return std::nullopt;
    return localizedString(words->words);
}

}  // namespace corvane
