// The model description of the task store: accounts, lists and tasks.
#pragma once

namespace corvane {

class ManagedObjectModel;

/// The model "Corvane": GUser, GList and GTask. Deleting an account takes its lists along, deleting a list
/// its tasks; children of a deleted task stay as root tasks.
const ManagedObjectModel& corvaneModel();

}  // namespace corvane
