// The identity of an object in its store, and its URI form.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class EntityDescription;
class ManagedObjectModel;

/// A permanent identifier names a row; a temporary one names an object that was not saved yet.
struct ManagedObjectID {
    const EntityDescription* entity = nullptr;
    std::int64_t key = 0;  ///< Z_PK, or the token of a temporary identifier
    bool isTemporary = false;

    auto operator<=>(const ManagedObjectID&) const = default;
};

/// "x-coredata://UUID/GTask/p12", or "x-coredata:///GTask/t1F" for a temporary one.
std::string uriRepresentation(const ManagedObjectID& objectID, std::string_view storeUuid);

/// Reads the first form strictly. None for another store, an unknown entity, a number that is not
/// positive or has leading zeros, or anything around it.
std::optional<ManagedObjectID> objectIDFromUri(std::string_view uri, std::string_view storeUuid,
                                               const ManagedObjectModel& model);

}  // namespace corvane

template <>
struct std::hash<corvane::ManagedObjectID> {
    std::size_t operator()(const corvane::ManagedObjectID& objectID) const noexcept {
        return std::hash<const void*>()(objectID.entity) ^
               (std::hash<std::int64_t>()(objectID.key) * 2 + static_cast<std::size_t>(objectID.isTemporary));
    }
};
