// The standard task filters: their predicates, names, images and remembered sort orders.
#include "queries/TaskFilters.h"

#include <array>

#include "dates/DateBasics.h"
#include "model/CorvaneUserDefaults.h"
#include "model/GSData.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

struct TaskFilter {
    const char* name;
    std::string_view image;
    std::string_view orderKey;                ///< user default of the tasks order; empty: always manual
    std::u16string_view dates;                ///< what the filter adds about dates and completion
    std::u16string_view datesWithoutOverdue;  ///< instead, where overdue tasks have a view of their own
};

constexpr std::u16string_view kSame = {};

constexpr std::array<TaskFilter, kTaskFilterCount> kFilters = {
    {
     {textKey("Overdue"), "Filter-Overdue", "OverdueTasksOrder",
         u" && hasDueDate == YES && ((hasDueTime == YES && dueDate < $NOW) || (hasDueTime == NO && dueDate < "
         u"$TODAY))",
         kSame},
     {textKey("Today"), "Filter-Today", "TodayOverdueTasksOrder",
         u" && hasDueDate == YES && dueDate < $TOMORROW",
         u" && hasDueDate == YES && dueDate >= $TODAY && dueDate < $TOMORROW"},
     {textKey("Tomorrow"), "Filter-Tomorrow", "TomorrowTasksOrder",
         u" && hasDueDate == YES && dueDate >= $TOMORROW && dueDate < $DAY_AFTER_TOMORROW", kSame},
     {textKey("Upcoming Week"), "Filter-Week", "WeekOverdueTasksOrder",
         u" && hasDueDate == YES && dueDate < $NEXT_WEEK",
         u" && hasDueDate == YES && dueDate >= $TODAY && dueDate < $NEXT_WEEK"},
     {textKey("No Due Date"), "Filter-NoDate", "NoDueDateTasksOrder", u" && hasDueDate == NO", kSame},
     {textKey("Everything"), "Filter-All", "AllTasksOrder", u"", kSame},
     {textKey("Completed Tasks"), "Filter-Completed", "CompletedTasksOrder", u" && completed == YES",
         kSame},
     // Later is told apart from Everything by its name alone; both select the same tasks.
        {textKey("Later"), "Filter-Later", "LaterTasksOrder", u"", kSame},
     {textKey("None"), "Filter-Calendar", "", u"", kSame},
     }
};

const TaskFilter* filterWithNumber(std::uint32_t filter) {
    return filter < kFilters.size() ? &kFilters[filter] : nullptr;
}

// Overdue keeps to the account at hand. The other filters also show the tasks of the account type that is
// never listed, whichever account is at hand.
std::u16string_view scopeFragment(std::uint32_t filter) {
    if (filter == kOverdueFilter) return u" && list.user == $USER";
    if (filter == kListFilter) return u" && list == $LIST";
    return u" && (list.user.accountType == 5000 || list.user == $USER)";
}

std::u16string_view dateFragment(std::uint32_t filter, bool overdueHasItsOwnView) {
    const TaskFilter* const found = filterWithNumber(filter);
    if (!found) return {};
    return overdueHasItsOwnView && !found->datesWithoutOverdue.empty() ? found->datesWithoutOverdue
                                                                       : found->dates;
}

Value valueOf(ManagedObject* object) { return object ? Value(object) : Value(); }

}  // namespace

std::string_view filterNameKey(std::uint32_t filter) {
    const TaskFilter* const found = filterWithNumber(filter);
    return found ? found->name : std::string_view();
}

std::string_view tasksOrderKeyForFilter(std::uint32_t filter) {
    const TaskFilter* const found = filterWithNumber(filter);
    return found ? found->orderKey : std::string_view();
}

Predicate predicateWithTaskVariables(const Predicate& predicate, GUser* account, GList* list) {
    const Date moment = now();
    return predicate.withSubstitutionVariables({
        {"USER",               valueOf(account)                           },
        {"LIST",               valueOf(list)                              },
        {"NOW",                Value(moment)                              },
        {"TODAY",              Value(dateOfTodayMidnightWithDaysOffset(0))},
        {"TOMORROW",           Value(dateOfTodayMidnightWithDaysOffset(1))},
        {"DAY_AFTER_TOMORROW", Value(dateOfTodayMidnightWithDaysOffset(2))},
        {"NEXT_WEEK",          Value(dateOfTodayMidnightWithDaysOffset(8))},
    });
}

std::u16string GSData::predicateStringForTasksWithFilter(std::int32_t filter, bool hideCompletedTasks,
                                                         bool rootTasksOnly) {
    const bool overdueHasItsOwnView = corvaneUserDefaults().boolForKey("ShowOverdueTasksList");
    const auto number = static_cast<std::uint32_t>(filter);
    std::u16string text =
        u"removed == NO && name != nil && name != '' && list.removed == NO && list.isIsolated == NO";
    if (rootTasksOnly) text += u" && parentTask = nil";
    text += scopeFragment(number);
    if (hideCompletedTasks && number != kCompletedFilter) text += u" && completed == NO";
    text += dateFragment(number, overdueHasItsOwnView);
    return text;
}

Predicate GSData::predicateFromString(std::u16string_view text, GUser* forAccount, GList* list) {
    return predicateWithTaskVariables(fixedPredicate(text), forAccount, list);
}

std::optional<std::u16string> GSData::filterLocalizedName(std::uint32_t filter) {
    const TaskFilter* const found = filterWithNumber(filter);
    if (!found) return std::nullopt;
    return localizedString(found->name);
}

std::string_view GSData::filterImageName(std::int32_t filter) {
    const TaskFilter* const found = filterWithNumber(static_cast<std::uint32_t>(filter));
    return found ? found->image : kFilters[kOverdueFilter].image;
}

std::int16_t GSData::tasksOrderForFilter(std::uint32_t filter) {
    const std::string_view key = tasksOrderKeyForFilter(filter);
    return key.empty() ? std::int16_t{0}
                       : static_cast<std::int16_t>(corvaneUserDefaults().integerForKey(key));
}

}  // namespace corvane
