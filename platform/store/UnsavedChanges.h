// The part of a fetch that unsaved changes take: which objects have to be judged in memory. For the store's
// own sources.
#pragma once

#include <span>
#include <vector>

#include "platform/store/ContextState.h"
#include "platform/store/UsedProperties.h"

namespace corvane {

/// Whether any object that a fetch may look at has unsaved changes.
bool hasUnsavedChanges(ContextState& context, const UsedProperties& used);

/// Objects of the tree's entity of which a fetch may say something else than the file does: inserted and
/// deleted ones, those with a change in what is read, and those that are reached from such objects. Each
/// once.
std::vector<ManagedObject*> affectedObjects(ContextState& context, const UsedProperties& used);

/// Brings in what judging these objects reads, in as few statements as possible.
void loadForJudging(ContextState& context, const UsedProperties& used,
                    std::span<ManagedObject* const> objects);

}  // namespace corvane
