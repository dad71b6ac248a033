// Whether due dates stand where their task's repeat rule would put them.
#pragma once

#include "platform/foundation/Date.h"

namespace corvane {

class GTask;

/// Rules without days of their own fit every date.
bool isOnItsRule(const GTask& task, Date dueDate);

}  // namespace corvane
