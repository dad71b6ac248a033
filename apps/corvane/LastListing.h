// The numbers of the last listing of tasks, remembered outside the store:
// $XDG_STATE_HOME/corvane/last-listing.
//
// One entry a container, with the identifiers of the tasks in the order shown. A number never means another
// task than the one that was shown under it. The file is private; where it cannot be kept, numbers are not
// known.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class LastListing {
  public:
    /// What was last listed from the environment's container.
    static LastListing ofContainer();
    /// Replaces it.
    static void remember(const std::vector<std::string>& identifiers);

    /// @param number  counted from 1
    std::optional<std::string> identifier(std::size_t number) const;

  private:
    std::vector<std::string> identifiers_;
};

}  // namespace corvane
