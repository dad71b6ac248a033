// What a fetch reads from objects, as a tree over the relationships of its key paths. For the store's own
// sources.
#pragma once

#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "platform/store/FetchRequest.h"
#include "platform/store/ModelDescription.h"

namespace corvane {

struct UsedProperties {
    explicit UsedProperties(const EntityDescription& itsEntity)
        : entity(&itsEntity), used(itsEntity.properties().size(), false) {}

    /// Takes in a key path; what the model does not know of it is left out.
    void add(std::span<const std::string_view> keys);

    /// False where only the objects themselves count, not what they hold.
    bool readsValues() const;

    const EntityDescription* entity;
    std::vector<bool> used;  ///< by property
    std::map<PropertyIndex, UsedProperties> related;
};

/// What the predicate and the sort keys of a request read.
UsedProperties usedPropertiesOf(const FetchRequest& request, const EntityDescription& entity);
UsedProperties usedPropertiesOf(const std::vector<SortDescriptor>& keys, const EntityDescription& entity);

}  // namespace corvane
