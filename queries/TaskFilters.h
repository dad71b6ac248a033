// The standard task filters by number: 0 Overdue ... 7 Later, 8 the tasks of a single list.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/store/Predicate.h"

namespace corvane {

class GList;
class GUser;

inline constexpr std::uint32_t kOverdueFilter = 0;
inline constexpr std::uint32_t kTodayFilter = 1;
inline constexpr std::uint32_t kEverythingFilter = 5;
inline constexpr std::uint32_t kCompletedFilter = 6;
inline constexpr std::uint32_t kListFilter = 8;
inline constexpr std::uint32_t kTaskFilterCount = 9;

/// The English name of a filter, its key for translations; empty for other numbers.
std::string_view filterNameKey(std::uint32_t filter);

/// The user default that keeps the tasks order of a filter; empty for a single list and other numbers.
std::string_view tasksOrderKeyForFilter(std::uint32_t filter);

/// A predicate with the variables of the filters bound: $USER and $LIST (null compares as nil), and $NOW,
/// $TODAY, $TOMORROW, $DAY_AFTER_TOMORROW and $NEXT_WEEK as of now.
Predicate predicateWithTaskVariables(const Predicate& predicate, GUser* account, GList* list);

}  // namespace corvane
