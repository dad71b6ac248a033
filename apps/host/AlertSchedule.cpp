#include "apps/host/AlertSchedule.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

constexpr const char* kFileName = "alerts";
constexpr const char* kBegunAtKey = "begunAt";
constexpr const char* kCheckedUntilKey = "checkedUntil";
constexpr const char* kGivenKey = "given";

// How long a given alert is remembered: a clock that is set back by more gives it again.
constexpr TimeInterval kRemembered{24 * 60 * 60};
constexpr TimeInterval kLookBack{10 * 60};

constexpr const char16_t* kAlertsAfter =
    u"removed == NO && name != nil && name != '' && list.removed == NO && completed == NO && "
    u"hasDueDate == YES && alertEnabled == YES && alertDate > %@";

FetchRequest requestInOrder(Predicate predicate) {
    FetchRequest request;
    request.predicate = std::move(predicate);
    request.sortDescriptors = {{"alertDate"}, {"list.displayOrder"}, {"displayOrder"}};
    request.relationshipKeyPathsForPrefetching = {"list"};
    return request;
}

std::string uriOf(const GTask& task) { return task.managedObjectContext()->uriRepresentation(task); }

}  // namespace

std::vector<GTask*> tasksWithAlertsBetween(ManagedObjectContext& context, Date after, Date until) {
    static const std::u16string text = kAlertsAfter + std::u16string(u" && alertDate <= %@");
    return context.fetch<GTask>(requestInOrder(fixedPredicate(text, {Value(after), Value(until)})));
}

std::optional<Date> nextAlert(ManagedObjectContext& context, Date after) {
    FetchRequest request = requestInOrder(fixedPredicate(kAlertsAfter, {Value(after)}));
    request.fetchLimit = 1;
    const std::vector<GTask*> tasks = context.fetch<GTask>(std::move(request));
    return tasks.empty() ? std::nullopt : tasks.front()->alertDate();
}

AlertSchedule::AlertSchedule(const std::string& store, Date now) : file_(kFileName, store) {
    const PropertyList state{file_.read()};
    begunAt_ = dateInState(state, kBegunAtKey).value_or(now);
    checkedUntil_ = dateInState(state, kCheckedUntilKey).value_or(now);
    const PropertyList* given = state.find(kGivenKey);
    if (const auto* moments = given ? given->get<PropertyList::Dictionary>() : nullptr) {
        for (const auto& [task, moment] : *moments) {
            if (const auto date = dateOfState(moment)) given_[task] = *date;
        }
    }
    if (!state.find(kBegunAtKey)) save();
}

std::vector<GTask*> AlertSchedule::take(ManagedObjectContext& context, Date now) {
    begunAt_ = std::min(begunAt_, now);
    const Date checked = std::min(checkedUntil_, now);
    checkedUntil_ = now;
    const Date after = std::max(begunAt_, checked - kLookBack);
    std::vector<GTask*> tasks = tasksWithAlertsBetween(context, after, now);
    std::erase_if(tasks, [this](const GTask* task) { return isGiven(*task); });
    for (const GTask* task : tasks) given_[uriOf(*task)] = task->alertDate().value_or(now);
    std::erase_if(given_, [now](const auto& entry) { return entry.second < now - kRemembered; });
    // A run that ends is taken up from what was last written down.
    if (!tasks.empty() || !savedUntil_ || now < *savedUntil_ || now - *savedUntil_ > kLookBack) save();
    return tasks;
}

bool AlertSchedule::isGiven(const GTask& task) const {
    const auto given = given_.find(uriOf(task));
    return given != given_.end() && given->second == task.alertDate();
}

void AlertSchedule::save() {
    PropertyList::Dictionary given;
    for (const auto& [task, moment] : given_) given[task] = stateOfDate(moment);
    const bool isKept = file_.write({
        {kBegunAtKey,      stateOfDate(begunAt_)     },
        {kCheckedUntilKey, stateOfDate(checkedUntil_)},
        {kGivenKey,        {std::move(given)}        }
    });
    if (isKept) savedUntil_ = checkedUntil_;
}

}  // namespace corvane
