#include "apps/host/StoreCheck.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_set>
#include <variant>

#include "dates/RepeatArithmetic.h"
#include "model/Accounts.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"
#include "model/RepeatAlignment.h"
#include "model/TaskTree.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/SqliteStore.h"
#include "queries/ListPositions.h"

namespace corvane {
namespace {

struct Finding {
    StoreFault fault;
    std::function<bool()> mend;  ///< whether it could
};
using Findings = std::vector<Finding>;

std::u16string nameOf(std::optional<std::u16string_view> name) {
    return std::u16string(name && !name->empty() ? *name : std::u16string_view(u"?"));
}

template <class Object>
StoreFault fault(FaultKind kind, const char* sentence, const Object& object) {
    return {kind, stringWithFormat(localizedString(sentence), {nameOf(object.name())})};
}

/// A mending that always can.
std::function<bool()> always(std::function<void()> action) {
    return [action = std::move(action)] {
        action();
        return true;
    };
}

template <class Object>
std::vector<Object*> liveObjects(ManagedObjectContext& context) {
    FetchRequest request;
    request.predicate = fixedPredicate(u"removed == NO");
    return context.fetch<Object>(std::move(request));
}

/// The live tasks of live lists, and those without a list.
std::vector<GTask*> judgedTasks(ManagedObjectContext& context) {
    std::vector<GTask*> tasks = liveObjects<GTask>(context);
    std::erase_if(tasks, [](const GTask* task) { return task->list() && task->list()->removed(); });
    return tasks;
}

Findings listsWithoutAccount(ManagedObjectContext& context) {
    Findings findings;
    for (GList* list : liveObjects<GList>(context)) {
        if (list->user()) continue;
        findings.push_back({fault(FaultKind::kReference, textKey("The list \"%@\" is in no account"), *list),
                            [&context, list] {
                                GUser* account = defaultAccount(context);
                                list->setUser(account);
                                return account != nullptr;
                            }});
    }
    return findings;
}

Findings tasksWithoutList(ManagedObjectContext& context) {
    Findings findings;
    for (GTask* task : judgedTasks(context)) {
        if (task->list()) continue;
        findings.push_back(
            {fault(FaultKind::kReference, textKey("The task \"%@\" is in no list"), *task), [&context, task] {
                 const GUser* account = defaultAccount(context);
                 GList* list = account ? account->defaultList() : nullptr;
                 if (!list) return false;
                 task->setList(list);
                 task->updateLastModified();
                 return true;
             }});
    }
    return findings;
}

const char* faultOfParent(const GTask& task) {
    if (std::holds_alternative<std::monostate>(task.valueForKey("parentTask"))) return nullptr;
    const GTask* parent = task.parentTask();
    if (!parent) return textKey("The task \"%@\" is below a task that is gone");
    if (parent->removed()) return textKey("The task \"%@\" is below a removed task");
    return parent->list() == task.list() ? nullptr
                                         : textKey("The task \"%@\" is below a task of another list");
}

/// One task of every circle of parents.
std::vector<GTask*> tasksThatCloseCircles(const std::vector<GTask*>& tasks) {
    std::unordered_set<const GTask*> done;
    std::vector<GTask*> closing;
    for (GTask* task : tasks) {
        std::unordered_set<const GTask*> path;
        GTask* last = nullptr;
        for (GTask* next = task; next && !done.contains(next); next = next->parentTask()) {
            if (!path.insert(next).second) {
                closing.push_back(last);
                break;
            }
            last = next;
        }
        done.insert(path.begin(), path.end());
    }
    return closing;
}

Finding parentFinding(GTask& task, const char* sentence) {
    return {fault(FaultKind::kReference, sentence, task), always([&task] {
                task.setParentTask(nullptr);
                task.updateLastModified();
            })};
}

Findings tasksWithWrongParent(ManagedObjectContext& context) {
    Findings findings;
    const std::vector<GTask*> tasks = judgedTasks(context);
    for (GTask* task : tasks) {
        if (const char* sentence = faultOfParent(*task)) findings.push_back(parentFinding(*task, sentence));
    }
    for (GTask* task : tasksThatCloseCircles(tasks)) {
        findings.push_back(parentFinding(*task, textKey("The task \"%@\" is below itself")));
    }
    return findings;
}

Findings wrongDueDates(ManagedObjectContext& context) {
    Findings findings;
    for (GTask* task : judgedTasks(context)) {
        const bool isDue = task->dueDate().has_value();
        if (!isDue && (task->alertEnabled() || task->alertDate())) {
            findings.push_back(
                {fault(FaultKind::kDueDate, textKey("The task \"%@\" has an alert but no due date"), *task),
                 always([task] {
                     task->setDateAlert(std::nullopt);
                     task->updateLastModified();
                 })});
        }
        if (task->hasDueDate() == isDue) continue;
        const char* sentence = isDue ? textKey("The task \"%@\" has a due date but is marked as having none")
                                     : textKey("The task \"%@\" is marked as having a due date but has none");
        findings.push_back({fault(FaultKind::kDueDate, sentence, *task), always([task] {
                                task->setHasDueDate(task->dueDate().has_value());
                                task->updateLastModified();
                            })});
    }
    return findings;
}

Findings wrongCompletion(ManagedObjectContext& context) {
    Findings findings;
    for (GTask* task : judgedTasks(context)) {
        const auto isOpen = [](const GTask* child) { return !child->removed() && !child->completed(); };
        if (!task->completed() || std::ranges::none_of(task->subTasks(), isOpen)) continue;
        findings.push_back(
            {fault(FaultKind::kCompletion, textKey("The task \"%@\" is done but has open subtasks"), *task),
             always([task] { task->fixCompletedSubtaskingSanity(); })});
    }
    return findings;
}

// A weekly rule may hold nothing but numbers that are no weekdays.
bool hasDayToBeOn(const GTask& task) {
    if (task.alertRepeat() != kRepeatWeekly && task.alertRepeat() != kRepeatWeeklyOlder) return true;
    const auto isWeekday = [](std::uint64_t day) { return day >= kSunday && day <= kSaturday; };
    return std::ranges::any_of(task.weeklyRepeatWeekdays(), isWeekday);
}

bool isOffItsRule(const GTask& task) {
    const std::optional<Date> due = task.dueDate();
    return due && !task.completed() && hasDayToBeOn(task) && !isOnItsRule(task, *due);
}

Findings misalignedRepeats(ManagedObjectContext& context) {
    Findings findings;
    for (GTask* task : judgedTasks(context)) {
        if (!isOffItsRule(*task)) continue;
        findings.push_back(
            {fault(FaultKind::kRepeat, textKey("The task \"%@\" is due off its repeat rule"), *task),
             always([task] { task->fixSanity(); })});
    }
    return findings;
}

// Clearing the mark first lets the model's own operation take it from all the others.
void keepAsOnlyDefault(GList& list) {
    list.setIsDefault(false);
    list.setAsDefault(true);
}

Findings severalDefaultLists(ManagedObjectContext& context) {
    Findings findings;
    for (GUser* account : allAccounts(context)) {
        std::vector<GList*> lists = account->orderedLists();
        std::erase_if(lists, [](const GList* list) { return !list->isDefault(); });
        if (lists.size() < 2) continue;
        findings.push_back(
            {fault(FaultKind::kDefault, textKey("The account \"%@\" has several default lists"), *account),
             always([list = lists.front()] { keepAsOnlyDefault(*list); })});
    }
    return findings;
}

Findings severalDefaultAccounts(ManagedObjectContext& context) {
    std::vector<GUser*> accounts = orderedAccounts(context);
    std::erase_if(accounts, [](const GUser* account) { return !account->isDefault(); });
    Findings findings;
    for (std::size_t i = 1; i < accounts.size(); ++i) {
        findings.push_back({fault(FaultKind::kDefault,
                                  textKey("The account \"%@\" is a second default account"), *accounts[i]),
                            always([account = accounts[i]] { account->setIsDefault(false); })});
    }
    return findings;
}

bool isTaskOrderSound(const GList& list) {
    std::int64_t position = 0;
    for (GTask* root : list.orderedRootTasks()) {
        for (const TaskInTree& entry : liveTree(*root)) {
            if (entry.task->displayOrder() != static_cast<std::int16_t>(position++)) return false;
        }
    }
    return true;
}

bool isListOrderSound(const GUser& account) {
    std::int32_t position = positionBase(&account);
    return std::ranges::all_of(account.orderedLists(), [&](const GList* list) {
        return list->displayOrder() == static_cast<std::int16_t>(position++);
    });
}

bool isAccountOrderSound(const std::vector<GUser*>& accounts) {
    std::int32_t position = 0;
    return std::ranges::all_of(accounts,
                               [&](const GUser* account) { return account->displayOrder() == position++; });
}

void renumberAccounts(ManagedObjectContext& context) {
    std::int16_t position = 0;
    for (GUser* account : orderedAccounts(context)) account->setDisplayOrder(position++);
}

// One repair puts all positions of an account right; every fault is told all the same.
Findings wrongOrders(ManagedObjectContext& context) {
    Findings findings;
    for (GUser* account : allAccounts(context)) {
        const auto mend = always([account] { account->fixAllDisplayOrders(); });
        for (const GList* list : account->orderedLists()) {
            if (isTaskOrderSound(*list)) continue;
            findings.push_back(
                {fault(FaultKind::kOrder, textKey("The tasks of the list \"%@\" are not numbered in order"),
                       *list),
                 mend});
        }
        if (isListOrderSound(*account)) continue;
        findings.push_back(
            {fault(FaultKind::kOrder, textKey("The lists of the account \"%@\" are not numbered in order"),
                   *account),
             mend});
    }
    if (isAccountOrderSound(orderedAccounts(context))) return findings;
    findings.push_back({
        {FaultKind::kOrder,                                      localizedString("The accounts are not numbered in order")},
        always([&context] { renumberAccounts(context);                                                      }
        )
    });
    return findings;
}

// The first thing that SQLite's own check of the file finds; a heading may stand in the line above it.
std::optional<std::string> damageOfFile(ManagedObjectContext& context) {
    SqliteStore* store = context.coordinator().store();
    if (!store) return std::nullopt;
    auto prepared = store->prepare("PRAGMA quick_check(1)");
    if (const auto* error = std::get_if<StoreError>(&prepared)) return error->message;
    auto& statement = std::get<SqliteStatement>(prepared);
    if (statement.step() != SqliteStatement::Step::kRow) return store->lastError().message;
    const std::string_view finding = statement.utf8(0);
    if (finding == "ok") return std::nullopt;
    const std::string_view line = finding.substr(finding.rfind('\n') + 1);
    return localizedUtf8("The store's database reports: %@.", {textFromUtf8(line)});
}

// Each builds on the ones before it: a tree is walked only once its parents are right.
constexpr Findings (*kChecks[])(ManagedObjectContext&) = {
    listsWithoutAccount, tasksWithoutList,    tasksWithWrongParent,   wrongDueDates, wrongCompletion,
    misalignedRepeats,   severalDefaultLists, severalDefaultAccounts, wrongOrders,
};

}  // namespace

std::optional<std::string> unreadableReason(ManagedObjectContext& context) {
    if (auto damage = damageOfFile(context)) return damage;
    for (const std::string_view entity : {GUser::kEntityName, GList::kEntityName, GTask::kEntityName}) {
        FetchRequest request;
        request.entityName = entity;
        const auto result = context.executeFetch(request);
        if (const auto* error = std::get_if<StoreError>(&result)) return error->message;
    }
    return std::nullopt;
}

std::vector<StoreFault> checkStore(ManagedObjectContext& context) {
    std::vector<StoreFault> faults;
    for (const auto check : kChecks) {
        for (Finding& finding : check(context)) faults.push_back(std::move(finding.fault));
    }
    return faults;
}

std::vector<StoreFault> repairStore(ManagedObjectContext& context) {
    std::vector<StoreFault> mended;
    for (const auto check : kChecks) {
        for (Finding& finding : check(context)) {
            if (finding.mend()) mended.push_back(std::move(finding.fault));
        }
    }
    return mended;
}

}  // namespace corvane
