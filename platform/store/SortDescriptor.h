// Sort keys of a fetch.
#pragma once

#include <string>
#include <vector>

namespace corvane {

class ManagedObject;

struct SortDescriptor {
    enum class Comparison { kPlain, kLocalizedCaseInsensitive };

    std::string keyPath;  ///< "list.name": to-one relationships, then an attribute
    bool ascending = true;
    Comparison comparison = Comparison::kPlain;

    bool operator==(const SortDescriptor&) const = default;
};

/// Orders two objects of one entity as the store orders their rows: nil first when ascending, ties by row
/// number with unsaved objects last in the order of their insertion.
bool isOrderedBefore(const ManagedObject& a, const ManagedObject& b, const std::vector<SortDescriptor>& keys);

}  // namespace corvane
