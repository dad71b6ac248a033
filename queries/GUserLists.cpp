// The lists of an account.
#include "model/DisplayOrder.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"
#include "queries/Fetches.h"

namespace corvane {
namespace {

std::vector<GList*> fetchLists(const GUser& account, std::u16string_view format,
                               const std::vector<SortDescriptor>& order = kByPosition) {
    return fetchObjects<GList>(account.managedObjectContext(), format, {argument(&account)}, order);
}

constexpr std::u16string_view kLiveLists = u"removed == NO AND user == %@";

// One reading tells that there is nothing to do; the tree is walked only where there is.
bool fixTaskOrders(GList& list) {
    if (isInTreeOrder(fetchObjects<GTask>(list.managedObjectContext(), u"removed == NO AND list == %@",
                                          {argument(&list)}, kByPosition, kReadWhenNeeded))) {
        return false;
    }
    bool changed = false;
    std::int32_t nextTask = 0;
    const ParentTasks parents = list.parentTasks();
    for (GTask* task : list.orderedRootTasks()) changed |= task->fixDisplayOrder(nextTask, &parents);
    return changed;
}

}  // namespace

GList* GUser::defaultList() const {
    std::vector<GList*> lists =
        fetchLists(*this, u"removed == NO AND user == %@ && isDefault == YES", kUnsorted);
    if (lists.empty()) lists = orderedLists();
    return firstOf(lists);
}

std::vector<GList*> GUser::orderedLists() const { return fetchLists(*this, kLiveLists); }

std::vector<GList*> GUser::orderedListsByTitle() const {
    return fetchLists(*this, kLiveLists,
                      {
                          {"name", true, SortDescriptor::Comparison::kLocalizedCaseInsensitive}
    });
}

std::vector<GList*> GUser::removedLists() const {
    return fetchLists(*this, u"removed == YES AND user == %@");
}

GList* GUser::findListId(std::optional<std::u16string_view> listId) const {
    if (!listId || listId->empty()) return nullptr;
    return firstOf(fetchObjects<GList>(managedObjectContext(), u"id == %@ AND user == %@",
                                       {Value(std::u16string(*listId)), argument(this)}, kUnsorted));
}

void GUser::deleteCompletedTasks() {
    for (GList* list : orderedLists()) list->deleteCompletedTasks();
}

bool GUser::fixAllDisplayOrders() {
    bool changed = false;
    for (GList* list : orderedLists()) changed |= fixTaskOrders(*list);
    std::int32_t nextList = 0;
    for (GList* list : orderedLists()) changed |= list->fixDisplayOrder(nextList);
    return changed;
}

}  // namespace corvane
