// How a program opens the shared store, and what it says when there is none.
#pragma once

#include <optional>
#include <string>

#include "model/GSData.h"

namespace corvane {

/// Launches a container to show what is there: a store that is missing is not made. Does nothing when it has
/// been launched.
void launchForShowing(GSData& data);

/// Launches a container to change something: container directory and store are made where there is none. One
/// that was launched without a store looks again.
void launchForChanging(GSData& data);

/// Whether a launched container is without a store because none was made yet.
bool isStoreMissing(const GSData& data);

/// One line about a launched container without a store; none when the store is there. Where none was made
/// yet, the line says how to begin.
std::optional<std::string> storeProblem(const GSData& data);

}  // namespace corvane
