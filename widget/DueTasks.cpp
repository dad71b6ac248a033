#include "widget/DueTasks.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "dates/DateBasics.h"
#include "model/GTask.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

constexpr const char16_t* kDueTasks =
    u"removed == NO && name != nil && name != '' && list.removed == NO && list.isIsolated == NO && "
    u"completed == NO && hasDueDate == YES && dueDate < $TOMORROW";

// A widget that is higher than this has room for everything; its rows come with the fetch.
constexpr std::int64_t kLargestBatch = 1000;

const Predicate& dueTasks() { return fixedPredicate(kDueTasks); }

const Predicate& overdueTasks() {
    static const std::u16string text =
        kDueTasks + std::u16string(u" && (dueDate < $TODAY || (hasDueTime == YES && dueDate <= $NOW))");
    return fixedPredicate(text.c_str());
}

const Predicate& tasksDueAtALaterTime() {
    static const std::u16string text = kDueTasks + std::u16string(u" && hasDueTime == YES && dueDate > $NOW");
    return fixedPredicate(text.c_str());
}

FetchRequest requestFor(const Predicate& predicate, const DueDates& dates) {
    FetchRequest request;
    request.entityName = GTask::kEntityName;
    request.predicate = predicate.withSubstitutionVariables(dates.substitutionVariables());
    return request;
}

std::vector<SortDescriptor> sortDescriptorsForDueTasks() {
    using enum SortDescriptor::Comparison;
    constexpr bool kAscending = true;
    return {
        {"priority",     !kAscending, kPlain                   },
        {"hasDueDate",   !kAscending, kPlain                   },
        {"dueDate",      kAscending,  kPlain                   },
        {"displayOrder", kAscending,  kPlain                   },
        {"list.name",    kAscending,  kLocalizedCaseInsensitive},
        {"name",         kAscending,  kLocalizedCaseInsensitive},
    };
}

// Only rows that are looked at are loaded, all of them at once; a task below them costs no more than its
// identity.
std::size_t batchSizeForRows(std::int64_t rows) {
    constexpr std::size_t kWholeRowsWithTheFetch = 0;
    if (rows < 0 || rows > kLargestBatch) return kWholeRowsWithTheFetch;
    return static_cast<std::size_t>(std::max<std::int64_t>(rows, 1));
}

}  // namespace

DueDates DueDates::ofThisMoment() {
    return {corvane::now(), dateOfTodayMidnightWithDaysOffset(0), dateOfTodayMidnightWithDaysOffset(1),
            dateOfTodayMidnightWithDaysOffset(2), dateOfTodayMidnightWithDaysOffset(8)};
}

Predicate::Variables DueDates::substitutionVariables() const {
    return {
        {"NOW",                now             },
        {"TODAY",              today           },
        {"TOMORROW",           tomorrow        },
        {"DAY_AFTER_TOMORROW", dayAfterTomorrow},
        {"NEXT_WEEK",          nextWeek        },
    };
}

FetchRequest requestForDueTasks(const DueDates& dates, std::int64_t rows) {
    FetchRequest request = requestFor(dueTasks(), dates);
    request.sortDescriptors = sortDescriptorsForDueTasks();
    request.fetchBatchSize = batchSizeForRows(rows);
    request.relationshipKeyPathsForPrefetching = {"list.user"};
    return request;
}

std::size_t countOverdueTasks(ManagedObjectContext& context, const DueDates& dates) {
    const auto result = context.countForFetch(requestFor(overdueTasks(), dates));
    const std::size_t* count = std::get_if<std::size_t>(&result);
    return count ? *count : 0;
}

std::optional<Date> nextDueTime(ManagedObjectContext& context, const DueDates& dates) {
    FetchRequest request = requestFor(tasksDueAtALaterTime(), dates);
    request.sortDescriptors = {{"dueDate"}};
    request.fetchLimit = 1;
    const std::vector<GTask*> tasks = context.fetch<GTask>(std::move(request));
    return tasks.empty() ? std::nullopt : tasks.front()->dueDate();
}

}  // namespace corvane
