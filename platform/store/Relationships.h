// Relationships in memory: from a row number to the object, and both sides kept alike. For the store's own
// sources.
#pragma once

#include "platform/store/ContextState.h"
#include "platform/store/ManagedObject.h"

namespace corvane {

/// The object at the other end of a to-one relationship, perhaps as a fault, perhaps one whose row is gone.
/// Null for nil and for a value that is no row number.
ManagedObject* relatedObject(const ManagedObject& object, PropertyIndex toOne);

/// Sets a to-one relationship and moves the object between the members of both other ends. An object of
/// another context stands for its row; one that is deleted or has no row here counts as nil.
void setRelatedObject(ManagedObject& object, PropertyIndex toOne, ManagedObject* value);

/// The members of a to-many relationship as far as they are in memory; null when nobody asked yet.
MemberList* memberListOf(const ObjectState& owner, PropertyIndex toMany);
/// Whether they are all in memory and up to date.
bool hasLoadedMembers(const ObjectState& owner, PropertyIndex toMany);

void addMember(ManagedObject& owner, PropertyIndex toMany, ManagedObject& member);
void removeMember(ManagedObject& owner, PropertyIndex toMany, ManagedObject& member);

/// Rows by number, then unsaved objects in the order of their insertion.
bool isMemberBefore(const ManagedObject* a, const ManagedObject* b);

/// Follows a to-one column that another writer changed: loaded members of both other ends are kept right.
void moveMember(ManagedObject& object, PropertyIndex toOne, const Slot& from, const Slot& to);

}  // namespace corvane
