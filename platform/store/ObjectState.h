// What a managed object keeps for its context: identity, values, unsaved changes. For the store's own
// sources.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/store/ModelDescription.h"
#include "platform/store/Slot.h"

namespace corvane {

class ContextState;
struct LoadGroup;

/// A property with an unsaved change, and what the row held when it was read last.
struct ChangedProperty {
    PropertyIndex property = 0;
    Slot original;
};

struct ObjectState {
    enum class Pending : std::uint8_t { kNone, kInserted, kUpdated, kDeleted };

    ObjectState(ManagedObject& owner, const EntityDescription& description)
        : object(owner), entity(&description) {}

    static ObjectState& of(const ManagedObject& object);

    bool isPersistent() const { return context && !isTemporary; }
    bool isDeleted() const { return isGone || pending == Pending::kDeleted; }
    /// False for an object that counts as none to whoever looks through a relationship.
    bool isThere() const { return !isMissing && !isDeleted(); }
    bool hasPropertyChanges() const { return changes && !changes->empty(); }
    /// The change of a property; null when it has none.
    ChangedProperty* changeOf(PropertyIndex property) const;
    /// Values of the properties, made when they are needed first.
    Slot* ensureSlots();
    /// Puts in a value and keeps the one that the row held. A change back to that one is no change any more.
    void replace(PropertyIndex property, Slot value);
    /// Where a value of the row belongs: beside an unsaved change of the property, else in its slot.
    Slot& storedSlot(PropertyIndex property);
    /// Ends the changes whose values the row has got by itself.
    void dropChangesThatTheRowHas();
    /// All properties but the members as if they were never set.
    void resetValues();
    /// Lets the object drop what it derived from its values.
    void tellOfFreshValues();
    /// A deleted object whose deletion was saved, by whomever, or that was never saved.
    void leaveContext();

    ManagedObject& object;
    const EntityDescription* entity;
    ContextState* context = nullptr;
    std::int64_t key = 0;      ///< Z_PK, or the token of a temporary identifier
    std::int64_t version = 0;  ///< Z_OPT as it was read last
    std::int64_t newKey = 0;   ///< of an unsaved object, while it is being saved
    std::unique_ptr<Slot[]> slots;
    std::unique_ptr<std::vector<ChangedProperty>> changes;

    /// The objects that came in together with this one, and its place among them.
    std::shared_ptr<LoadGroup> group;
    std::uint32_t position = 0;
    std::uint32_t pendingPosition = 0;        ///< in the context's sequence of its kind of change
    const ManagedObject* referrer = nullptr;  ///< whose to-one relationship led to this fault last

    std::uint32_t readVersion = 0;  ///< ContextState::readVersion when the row was read
    std::uint32_t readSerial = 0;   ///< of the statement that read the row last
    Pending pending = Pending::kNone;
    bool isTemporary = false;
    bool isLoaded = true;    ///< false: a fault, or values that are to be read afresh before use
    bool isMissing = false;  ///< the file was asked and had no such row
    bool isGone = false;
    bool isAffected = false;  ///< a fetch judges it in memory at the moment
    // In the group of changes that was not told of yet
    bool isTouched = false;
    bool wasInserted = false;
    bool wasDeleted = false;

    struct Observers {
        using Observer = std::function<void(ManagedObject& object, std::string_view key, bool isPrior)>;
        std::vector<std::pair<std::uint64_t, Observer>> entries;
        std::uint64_t lastToken = 0;
    };
    std::unique_ptr<Observers> observers;
};

}  // namespace corvane
