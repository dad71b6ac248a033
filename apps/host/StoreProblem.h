// Why a program has no store to show or to work with, in words for people.
#pragma once

#include <optional>
#include <string>

#include "model/GSData.h"

namespace corvane {

/// One line about a launched container without a store; none when the store is there. Where none was made
/// yet, the line says how to begin.
std::optional<std::string> storeProblem(const GSData& data);

}  // namespace corvane
