// The base of all entity objects: faulting, change tracking, relationships with their inverses, observers.
//
// Objects belong to their context and are only borrowed by everybody else. A pointer stays valid as long as
// the context lives; a deleted object says so and has no context once its deletion was saved.
#pragma once

#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/ManagedObjectID.h"
#include "platform/store/ModelDescription.h"
#include "platform/store/ObjectState.h"
#include "platform/store/Value.h"

namespace corvane {

class ManagedObjectContext;

/// The members of a to-many relationship, in the relationship's own order. Borrowed: any change of the
/// relationship ends it; copy it (`toVector`) before a walk that changes the relationship.
template <class Object>
class RelatedObjects {
  public:
    class Iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Object*;
        using difference_type = std::ptrdiff_t;
        using pointer = Object* const*;
        using reference = Object*;

        Iterator() = default;
        explicit Iterator(ManagedObject* const* position) : position_(position) {}
        Object* operator*() const { return static_cast<Object*>(*position_); }
        Iterator& operator++() {
            ++position_;
            return *this;
        }
        Iterator operator++(int) { return Iterator(position_++); }
        bool operator==(const Iterator&) const = default;

      private:
        ManagedObject* const* position_ = nullptr;
    };

    RelatedObjects() = default;
    explicit RelatedObjects(const std::vector<ManagedObject*>& members)
        : members_(members.data()), size_(members.size()) {}

    Iterator begin() const { return Iterator(members_); }
    Iterator end() const { return Iterator(members_ + size_); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    std::vector<Object*> toVector() const { return std::vector<Object*>(begin(), end()); }

  private:
    ManagedObject* const* members_ = nullptr;
    std::size_t size_ = 0;
};

class ManagedObject {
  public:
    /// Called around a change of a property: `isPrior` before it, then after it.
    using Observer = std::function<void(ManagedObject& object, std::string_view key, bool isPrior)>;
    using ObserverToken = std::uint64_t;

    explicit ManagedObject(const EntityDescription& entity);
    virtual ~ManagedObject();
    ManagedObject(const ManagedObject&) = delete;
    ManagedObject& operator=(const ManagedObject&) = delete;

    const EntityDescription& entity() const;
    /// Null before insertion and after a saved deletion.
    ManagedObjectContext* managedObjectContext() const;
    ManagedObjectID objectID() const;

    bool isInserted() const;
    bool isUpdated() const;
    bool isDeleted() const;
    bool isFault() const;
    bool hasChanges() const;
    /// Names of the properties with unsaved changes, in the entity's order.
    std::vector<std::string_view> changedKeys() const;

    /// Fills a fault. A row that is gone leaves the object with default values.
    void willAccess() const;

    /// The value as stored: nil stays nil where an accessor would read 0, and a value of another kind than
    /// the attribute's (a text in a number's column) is given as it is. A column that the file lacks gives
    /// the attribute's default. To-many, and every property of an object whose row is gone: nil.
    /// An unknown key: nil.
    Value valueForKey(std::string_view key) const;
    Value valueAt(PropertyIndex index) const;
    /// As valueAt, without a copy: valid until the object's next change.
    ValueView viewAt(PropertyIndex index) const;
    /// Members of a to-many relationship; none for an object whose row is gone.
    const std::vector<ManagedObject*>& membersAt(PropertyIndex index) const;
    /// Sets an attribute or to-one relationship by name; writes only a different value. A value of a kind
    /// that the property cannot hold, and an unknown key, change nothing.
    void setValueForKey(std::string_view key, const Value& value);

    // Notices
    ObserverToken addObserver(Observer observer);
    void removeObserver(ObserverToken token);
    void willChangeValueForKey(std::string_view key);
    void didChangeValueForKey(std::string_view key);

  protected:
    // Typed access by position; nil reads as false, 0 or none, and so does a value of a foreign kind. Setters
    // write only a value that differs from the stored one, note the change in the context and keep both sides
    // of a relationship. A deleted object is not changed any more.
    bool booleanAt(PropertyIndex index) const;
    std::int64_t integerAt(PropertyIndex index) const;  ///< clamped to the attribute's width
    double doubleAt(PropertyIndex index) const;
    std::optional<Date> dateAt(PropertyIndex index) const;
    std::optional<std::u16string_view> textAt(
        PropertyIndex index) const;  ///< until the next change of the attribute
    const Bytes* bytesAt(PropertyIndex index) const;
    /// Null also when the row that it refers to is not there.
    ManagedObject* objectAt(PropertyIndex index) const;

    void setBooleanAt(PropertyIndex index, bool value);
    void setIntegerAt(PropertyIndex index, std::int64_t value);
    void setDoubleAt(PropertyIndex index, double value);
    void setDateAt(PropertyIndex index, std::optional<Date> value);
    void setTextAt(PropertyIndex index, std::optional<std::u16string_view> value);
    void setBytesAt(PropertyIndex index, const Bytes* value);
    void setObjectAt(PropertyIndex index, ManagedObject* value);

    /// Called when the object turned into a fault or was filled afresh: transient state goes.
    virtual void didTurnIntoFault() {}

  private:
    friend struct ObjectState;
    const Slot& slotAt(PropertyIndex index) const;
    void setSlotAt(PropertyIndex index, Slot value);
    void notify(std::string_view key, bool isPrior);

    mutable ObjectState state_;
};

inline ObjectState& ObjectState::of(const ManagedObject& object) { return object.state_; }

}  // namespace corvane
