// Bounds that a disjunction implies.
#pragma once

#include <vector>

#include "platform/store/PredicateNode.h"

namespace corvane {

/// Comparisons that are true wherever an OR is true: where each of its alternatives keeps one attribute of
/// the object itself before some date, that attribute is not after the latest of these dates, and the other
/// way round. SQLite answers them from an index, which it does not find for the alternatives.
std::vector<PredicateNodePointer> impliedBounds(const PredicateNode& node);

}  // namespace corvane
