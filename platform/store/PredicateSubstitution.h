// Filling placeholders and variables of a predicate's tree.
#pragma once

#include <span>
#include <variant>

#include "platform/store/Predicate.h"
#include "platform/store/PredicateNode.h"

namespace corvane {

/// The tree with every placeholder filled, in order; parts without placeholders are shared. An error tells of
/// a missing argument or one that does not fit, at the placeholder's position.
std::variant<PredicateNodePointer, PredicateError> substituteArguments(
    const PredicateNodePointer& node, std::span<const PredicateArgument> arguments);

/// The tree with the variables that have a value filled in.
PredicateNodePointer substituteVariables(const PredicateNodePointer& node,
                                         const Predicate::Variables& variables);

}  // namespace corvane
