#include "apps/host/TaskSelection.h"

#include <string>
#include <string_view>
#include <vector>

#include "model/Accounts.h"
#include "model/GSData.h"
#include "model/GTask.h"
#include "platform/store/PredicateNode.h"
#include "platform/store/PredicateSubstitution.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

constexpr std::u16string_view kEveryLiveTask = u"removed == NO AND list.removed == NO";

Predicate everyLiveTask(const TaskSelection& selection) {
    std::u16string text(kEveryLiveTask);
    if (selection.rootsOnly) text += u" && parentTask = nil";
    if (selection.hideCompleted) text += u" && completed == NO";
    return fixedPredicate(text);
}

// The account that a filter and the variables of a predicate stand for: a list brings its own.
GUser* accountAtHand(const TaskSelection& selection, ManagedObjectContext& context) {
    if (selection.account) return selection.account;
    GUser* ofList = selection.list ? selection.list->user() : nullptr;
    return ofList ? ofList : defaultAccount(context);
}

Predicate filterPredicate(const TaskSelection& selection, GUser* account) {
    return GSData::predicateFromString(
        GSData::predicateStringForTasksWithFilter(static_cast<std::int32_t>(*selection.filter),
                                                  selection.hideCompleted, selection.rootsOnly),
        account, selection.list);
}

// The parts of a request are predicates of their own, joined at the end.
std::vector<Predicate> conditions(const TaskSelection& selection, GUser* accountAtHand) {
    std::vector<Predicate> parts;
    if (selection.filter) {
        parts.push_back(filterPredicate(selection, accountAtHand));
    } else {
        parts.push_back(everyLiveTask(selection));
        if (selection.account) {
            parts.push_back(fixedPredicate(u"list.user == %@", {Value(selection.account)}));
        }
    }
    if (selection.list) parts.push_back(fixedPredicate(u"list == %@", {Value(selection.list)}));
    if (selection.where) {
        parts.push_back(predicateWithTaskVariables(*selection.where, accountAtHand, selection.list));
    }
    return parts;
}

Predicate condition(const TaskSelection& selection, ManagedObjectContext& context) {
    if (!selection.everyAccount) {
        return andPredicateWithSubpredicates(conditions(selection, accountAtHand(selection, context)));
    }
    std::vector<GUser*> accounts = allAccounts(context);
    accounts.push_back(nullptr);
    std::vector<PredicateNodePointer> alternatives;
    for (GUser* account : accounts) {
        alternatives.push_back(andPredicateWithSubpredicates(conditions(selection, account)).root());
    }
    return Predicate(compoundNode(Compound::Kind::kOr, alternatives));
}

std::vector<SortDescriptor> order(const TaskSelection& selection) {
    const std::uint32_t filter = selection.filter.value_or(selection.list ? kListFilter : kEverythingFilter);
    const bool listDecides = selection.list && !selection.filter;
    const int remembered = listDecides ? selection.list->tasksOrder() : GSData::tasksOrderForFilter(filter);
    return GSData::sortDescriptorsForTasksOrder(selection.order.value_or(remembered),
                                                static_cast<std::int32_t>(filter))
        .value_or(std::vector<SortDescriptor>());
}

}  // namespace

FetchRequest requestForTasks(const TaskSelection& selection, ManagedObjectContext& context) {
    FetchRequest request;
    request.entityName = GTask::kEntityName;
    request.predicate = condition(selection, context);
    request.sortDescriptors = order(selection);
    request.relationshipKeyPathsForPrefetching = {"list.user"};
    return request;
}

std::optional<std::string> faultOfVariables(const Predicate& where) {
    // Which account and list the variables stand for makes no difference to what a predicate may ask.
    return faultAfterSubstitution(*predicateWithTaskVariables(where, nullptr, nullptr).root());
}

}  // namespace corvane
