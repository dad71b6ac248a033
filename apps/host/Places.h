// Accounts and lists as programs offer them, and the places that are made where there is none yet.
//
// Nothing here saves.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/GList.h"
#include "model/GUser.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// Every account as listings show them: the listed ones in order, then the unlisted ones.
std::vector<GUser*> accountsInOrder(ManagedObjectContext& context);
/// Every live list, account by account; last those that belong to none, as their tasks show too.
std::vector<GList*> listsInOrder(ManagedObjectContext& context);

/// A first account, of this device only; the default one.
GUser& makeFirstAccount(ManagedObjectContext& context);
/// A list at a place, counted from 0; -1: at the end. An account's first list is its default.
GList& makeList(GUser& account, std::u16string_view name, std::int32_t position);
/// The account's default list, made where it has none.
GList& defaultListOf(GUser& account);
/// The default list of the default account; both are made where there is none yet.
GList& listForNewTasks(ManagedObjectContext& context);

/// The last root task, behind which another one stands at the end of its list; null in an empty list.
GTask* lastRootTask(const GList& list);

}  // namespace corvane
