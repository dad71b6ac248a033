#include "apps/host/Places.h"

#include "model/Accounts.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

constexpr std::int32_t kAtTheEnd = -1;

std::vector<GList*> listsWithoutAccount(ManagedObjectContext& context) {
    FetchRequest request;
    request.predicate = fixedPredicate(u"removed == NO AND user == nil");
    request.sortDescriptors = {{"displayOrder"}};
    return context.fetch<GList>(std::move(request));
}

}  // namespace

std::vector<GUser*> accountsInOrder(ManagedObjectContext& context) {
    std::vector<GUser*> accounts = orderedAccounts(context);
    for (GUser* account : allAccounts(context)) {
        if (account->accountType() == kUnlistedAccountType) accounts.push_back(account);
    }
    return accounts;
}

std::vector<GList*> listsInOrder(ManagedObjectContext& context) {
    std::vector<GList*> lists;
    for (const GUser* account : accountsInOrder(context)) {
        const std::vector<GList*> more = account->orderedLists();
        lists.insert(lists.end(), more.begin(), more.end());
    }
    const std::vector<GList*> rest = listsWithoutAccount(context);
    lists.insert(lists.end(), rest.begin(), rest.end());
    return lists;
}

GUser& makeFirstAccount(ManagedObjectContext& context) {
    GUser& account = GUser::insertNewAccountToContext(context, kAtTheEnd);
    account.setName(localizedString("On this device"));
    account.setIsDefault(true);
    return account;
}

GList& makeList(GUser& account, std::u16string_view name, std::int32_t position) {
    const bool isFirst = account.orderedLists().empty();
    GList& list = GList::insertNewListToAccount(account, position);
    list.setName(name);
    if (isFirst) list.setAsDefault(true);
    return list;
}

GList& defaultListOf(GUser& account) {
    GList* list = account.defaultList();
    return list ? *list : makeList(account, localizedString("Tasks"), kAtTheEnd);
}

GList& listForNewTasks(ManagedObjectContext& context) {
    GUser* account = defaultAccount(context);
    return defaultListOf(account ? *account : makeFirstAccount(context));
}

GTask* lastRootTask(const GList& list) {
    const std::vector<GTask*> roots = list.orderedRootTasks();
    return roots.empty() ? nullptr : roots.back();
}

}  // namespace corvane
