// Deletion by the relationships' delete rules. For the store's own sources.
#pragma once

#include "platform/store/ContextState.h"

namespace corvane {

/// Deletes an object with everything that the rules take along, and clears what else refers to them. Rows
/// that are concerned are loaded, many in one statement, so that memory shows all of it at once.
void deleteByRules(ContextState& context, ManagedObject& object);

/// Takes an object out of the context whose row was deleted by somebody else. Its unsaved changes go with it;
/// whoever refers to it reads its own row afresh.
void forgetDeletedElsewhere(ContextState& context, ManagedObject& object);

}  // namespace corvane
