// Positions of an account's lists: stored from 0, or from 5000 for an account that is never listed.
#pragma once

#include <cstdint>
#include <span>

namespace corvane {

class GList;
class GUser;

inline constexpr std::int32_t kUnlistedPositionBase = 5000;

/// What is added to an account's list positions where they are stored. No account counts as a listed one.
std::int32_t positionBase(const GUser* account);

/// Gives the lists from index `first` to the end the positions `first + shift`, and so on, above the base.
void numberLists(std::span<GList* const> lists, std::size_t first, std::int32_t shift, std::int32_t base);

}  // namespace corvane
