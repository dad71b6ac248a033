// The accounts of a context: how they are found, made and given up.
#include "model/Accounts.h"

#include "model/GList.h"
#include "model/GTask.h"
#include "platform/foundation/Environment.h"
#include "queries/Fetches.h"

namespace corvane {
namespace {

const PredicateArgument kUnlisted = Value(std::int64_t{kUnlistedAccountType});

void numberAccounts(const std::vector<GUser*>& accounts, std::size_t first, std::size_t shift) {
    for (std::size_t i = first; i < accounts.size(); ++i) {
        accounts[i]->setDisplayOrder(static_cast<std::int16_t>(i + shift));
    }
}

// No server will ask for the list's tombstones again, and its live tasks are new to the next server.
void forgetServerOfTasks(GList& list) {
    for (GTask* task : list.orderedAllTasks()) task->setId(std::nullopt);
    for (GTask* task : list.removedTasks()) task->deleteTask(kPurge);
}

}  // namespace

std::vector<GUser*> allAccounts(ManagedObjectContext& context) { return context.fetch<GUser>({}); }

std::vector<GUser*> orderedAccounts(ManagedObjectContext& context) {
    return fetchObjects<GUser>(&context, u"accountType != %ld", {kUnlisted}, kByPosition);
}

GUser* defaultAccount(ManagedObjectContext& context) {
    std::vector<GUser*> accounts =
        fetchObjects<GUser>(&context, u"accountType != %ld && isDefault == YES", {kUnlisted}, kUnsorted);
    if (accounts.empty()) accounts = orderedAccounts(context);
    return firstOf(accounts);
}

GUser& GUser::insertNewAccountToContext(ManagedObjectContext& context, std::int32_t displayOrder) {
    const std::vector<GUser*> accounts = orderedAccounts(context);
    const auto count = static_cast<std::int32_t>(accounts.size());
    const std::int32_t position = displayOrder < 0 || displayOrder > count ? count : displayOrder;
    numberAccounts(accounts, static_cast<std::size_t>(position), 1);
    auto& account = context.insert<GUser>();
    account.setCreatedTimestamp(now());
    account.setDisplayOrder(static_cast<std::int16_t>(position));
    return account;
}

void GUser::makeAccountLocal() {
    setName(u"");
    setPassword(u"");
    setAccountType(kLocalAccountType);
    setDisplayOrder(0);
    for (GList* list : orderedLists()) {
        forgetServerOfTasks(*list);
        list->setId(std::nullopt);
        list->setDefaultList(false);
    }
    for (GList* list : removedLists()) {
        forgetServerOfTasks(*list);
        list->deleteList(kOutright);
    }
}

void GUser::deleteAccount() {
    ManagedObjectContext& context = *managedObjectContext();
    if (orderedAccounts(context).size() == 1) {
        makeAccountLocal();
        return;
    }
    context.deleteObject(*this);
    numberAccounts(orderedAccounts(context), 0, 0);
}

}  // namespace corvane
