// A list among the lists of its account.
#include <algorithm>

#include "model/GList.h"
#include "model/GUser.h"
#include "platform/foundation/Environment.h"
#include "platform/store/ManagedObjectContext.h"
#include "queries/ListPositions.h"

namespace corvane {
namespace {

std::vector<GList*> orderedListsOfAccount(const GList& list) {
    return list.user() ? list.user()->orderedLists() : std::vector<GList*>();
}

}  // namespace

std::int32_t positionBase(const GUser* account) {
    return account && account->accountType() == kUnlistedAccountType ? kUnlistedPositionBase : 0;
}

void numberLists(std::span<GList* const> lists, std::size_t first, std::int32_t shift, std::int32_t base) {
    for (std::size_t i = first; i < lists.size(); ++i) {
        lists[i]->setDisplayOrder(static_cast<std::int16_t>(static_cast<std::int32_t>(i) + shift + base));
    }
}

GList& GList::insertNewListToAccount(GUser& account, std::int32_t displayOrder) {
    const std::vector<GList*> lists = account.orderedLists();
    const auto count = static_cast<std::int32_t>(lists.size());
    const std::int32_t position = displayOrder < 0 || displayOrder > count ? count : displayOrder;
    const std::int32_t base = positionBase(&account);
    numberLists(lists, static_cast<std::size_t>(position), 1, base);
    auto& list = account.managedObjectContext()->insert<GList>();
    list.setCreatedTimestamp(now());
    list.setDisplayOrder(static_cast<std::int16_t>(position + base));
    list.setUser(&account);
    return list;
}

void GList::setAsDefault(bool isDefault) {
    if (this->isDefault() == isDefault) return;
    const std::vector<GList*> lists = orderedListsOfAccount(*this);
    if (isDefault) {
        for (GList* list : lists) {
            if (!list->isDefault()) continue;
            list->setIsDefault(false);
            list->updateLastModified();
        }
        setIsDefault(true);
        return;
    }
    const auto heir = std::find_if(lists.begin(), lists.end(), [this](GList* list) { return list != this; });
    if (heir == lists.end()) return;
    setIsDefault(false);
    (*heir)->setIsDefault(true);
    (*heir)->updateLastModified();
}

bool GList::fixDisplayOrder(std::int32_t& nextDisplayOrder) {
    const std::int32_t expected = nextDisplayOrder++ + positionBase(user());
    if (displayOrder() == expected) return false;
    setDisplayOrder(static_cast<std::int16_t>(expected));
    return true;
}

void GList::moveListToDisplayOrder(std::int32_t displayOrder) {
    std::vector<GList*> lists = orderedListsOfAccount(*this);
    const auto place = std::find(lists.begin(), lists.end(), this);
    if (place == lists.end()) return;
    const auto count = static_cast<std::int32_t>(lists.size());
    const std::int32_t target = displayOrder < 0 || displayOrder >= count ? count - 1 : displayOrder;
    const std::int32_t base = positionBase(user());
    if (this->displayOrder() - base == target) return;
    lists.erase(place);
    lists.insert(lists.begin() + target, this);
    numberLists(lists, 0, 0, base);
}

void GList::deleteList(bool outright) {
    const std::int32_t base = positionBase(user());
    updateLastModified();
    setAsDefault(false);
    setRemoved(true);
    // An unsound position counts as the nearest possible one.
    const std::vector<GList*> lists = orderedListsOfAccount(*this);
    const std::int32_t gap = std::max(displayOrder() - base, 0);
    numberLists(lists, static_cast<std::size_t>(gap), 0, base);
    if (id() && !outright) return;
    setUser(nullptr);
    if (ManagedObjectContext* context = managedObjectContext()) context->deleteObject(*this);
}

void GList::updateLastModified() {
    setLastModified(static_cast<std::int64_t>(static_cast<std::uint64_t>(lastModified()) + 1));
}

}  // namespace corvane
