// Filling placeholders and variables of a predicate's tree.
#pragma once

#include <optional>
#include <span>
#include <string>
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

/// What keeps a tree from being asked once its variables were filled: one that has no value, or a value on a
/// side that takes none such. One line for people; none for a tree that can be asked.
std::optional<std::string> faultAfterSubstitution(const PredicateNode& node);

}  // namespace corvane
