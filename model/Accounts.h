// The accounts of a context.
#pragma once

#include <vector>

#include "model/GUser.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// Every account, those of type 5000 included, in no particular order.
std::vector<GUser*> allAccounts(ManagedObjectContext& context);

/// The listed accounts by position.
std::vector<GUser*> orderedAccounts(ManagedObjectContext& context);

/// The listed account marked as default, else the first; null without listed accounts.
GUser* defaultAccount(ManagedObjectContext& context);

}  // namespace corvane
