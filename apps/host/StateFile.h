// What programs remember about stores outside of them: small property lists in $XDG_STATE_HOME/corvane.
//
// One file a subject, one entry a store, by the store's identifier. A file is private and replaced as a
// whole; one that somebody damaged is as good as none. Stores beyond the last 20 are forgotten.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/Date.h"
#include "platform/foundation/PropertyList.h"

namespace corvane {

class StateFile {
  public:
    /// @param name   of the file
    /// @param store  the store's identifier
    StateFile(std::string_view name, std::string store) : name_(name), store_(std::move(store)) {}

    /// Empty without an entry.
    PropertyList::Dictionary read() const;
    /// Replaces the entry; an empty one takes it away.
    /// @return false when it could not be kept; the file is then as it was
    [[nodiscard]] bool write(PropertyList::Dictionary entry) const;

  private:
    std::string name_;
    std::string store_;
};

/// A date as an entry holds it: to the last bit, which a property list's own dates are not kept to.
PropertyList stateOfDate(Date date);
/// The date of an entry, or the one under a key of it; none for anything else.
std::optional<Date> dateOfState(const PropertyList& entry);
std::optional<Date> dateInState(const PropertyList& entry, std::string_view key);

}  // namespace corvane
