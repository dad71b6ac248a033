// To-many relationships from the file: the members for many owners in one statement. For the store's own
// sources.
#pragma once

#include <span>

#include "platform/store/ManagedObject.h"

namespace corvane {

class ContextState;

/// Loads the members of a to-many relationship, for the owner and for those of its neighbours that lack
/// them. The members come in whole, as a group.
void loadMembers(ManagedObject& owner, PropertyIndex toMany);

/// As above for all of these owners that lack them, in as few statements as possible. For one that is deleted
/// here: those that others have given it since.
void loadMembersOf(ContextState& context, std::span<ManagedObject* const> owners, PropertyIndex toMany);

/// Loads those objects of one entity that are faults or were read before the last commit that was noticed.
void loadFresh(ContextState& context, std::span<ManagedObject* const> objects);

}  // namespace corvane
