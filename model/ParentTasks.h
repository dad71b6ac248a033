// The tasks of a list that have children, as renumbering asks for them.
#pragma once

#include <unordered_map>

#include "platform/store/ManagedObjectID.h"

namespace corvane {

class GTask;

/// The tasks of a list that have at least one live child, by their identity.
using ParentTasks = std::unordered_map<ManagedObjectID, GTask*>;

}  // namespace corvane
