// From predicate text to its tree, placeholders and variables unfilled.
#pragma once

#include <cstddef>
#include <string_view>
#include <variant>

#include "platform/store/Predicate.h"
#include "platform/store/PredicateNode.h"

namespace corvane {

/// Parentheses and NOTs inside each other beyond this are refused. Chains of AND and OR may be of any length.
inline constexpr std::size_t kMaxPredicateDepth = 500;

std::variant<PredicateNodePointer, PredicateError> parsePredicate(std::u16string_view text);

}  // namespace corvane
