// Typed access for entity classes: get<"name">() and set<"name">(value), checked by the compiler against the
// class's own property table.
#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <type_traits>

#include "platform/store/ManagedObject.h"

namespace corvane {

/// A property's name as a template argument.
template <std::size_t N>
struct PropertyName {
    char text[N]{};
    consteval PropertyName(const char (&literal)[N]) {
        for (std::size_t i = 0; i < N; ++i) text[i] = literal[i];
    }
    constexpr std::string_view view() const { return {text, N - 1}; }
};

/// Base of an entity class that has `static constexpr auto kProperties` and `kEntityName`.
template <class Object>
class EntityObject : public ManagedObject {
  public:
    using ManagedObject::ManagedObject;

    static EntityDescription entityDescription(std::vector<IndexDescription> indexes = {}) {
        return EntityDescription(Object::kEntityName, Object::kProperties, &makeObject, std::move(indexes));
    }

  protected:
    template <PropertyName Name>
    static consteval PropertyIndex indexOf() {
        for (PropertyIndex i = 0; i < Object::kProperties.size(); ++i) {
            if (Object::kProperties[i].name == Name.view()) return i;
        }
        throw "the entity has no such property";
    }

    template <PropertyName Name>
    auto get() const {
        constexpr PropertyIndex kIndex = indexOf<Name>();
        constexpr PropertyKind kKind = Object::kProperties[kIndex].kind;
        if constexpr (kKind == PropertyKind::kBoolean) {
            return booleanAt(kIndex);
        } else if constexpr (kKind == PropertyKind::kInt16) {
            return static_cast<std::int16_t>(integerAt(kIndex));
        } else if constexpr (kKind == PropertyKind::kInt32) {
            return static_cast<std::int32_t>(integerAt(kIndex));
        } else if constexpr (kKind == PropertyKind::kInt64) {
            return integerAt(kIndex);
        } else if constexpr (kKind == PropertyKind::kDouble) {
            return doubleAt(kIndex);
        } else if constexpr (kKind == PropertyKind::kDate) {
            return dateAt(kIndex);
        } else if constexpr (kKind == PropertyKind::kString) {
            return textAt(kIndex);
        } else {
            static_assert(kKind == PropertyKind::kTransformable, "use related or relatedMany");
            return bytesAt(kIndex);
        }
    }

    template <PropertyName Name, class T>
    void set(const T& value) {
        constexpr PropertyIndex kIndex = indexOf<Name>();
        constexpr PropertyKind kKind = Object::kProperties[kIndex].kind;
        if constexpr (kKind == PropertyKind::kBoolean) {
            setBooleanAt(kIndex, value);
        } else if constexpr (kKind == PropertyKind::kInt16 || kKind == PropertyKind::kInt32 ||
                             kKind == PropertyKind::kInt64) {
            setIntegerAt(kIndex, value);
        } else if constexpr (kKind == PropertyKind::kDouble) {
            setDoubleAt(kIndex, value);
        } else if constexpr (kKind == PropertyKind::kDate) {
            setDateAt(kIndex, value);
        } else if constexpr (kKind == PropertyKind::kString) {
            setTextAt(kIndex, value);
        } else if constexpr (kKind == PropertyKind::kTransformable) {
            setBytesAt(kIndex, value);
        } else {
            static_assert(kKind == PropertyKind::kToOne,
                          "a to-many relationship is changed at its other end");
            setObjectAt(kIndex, value);
        }
    }

    /// The object at the other end of a to-one relationship.
    template <PropertyName Name, class Related>
    Related* related() const {
        return static_cast<Related*>(objectAt(indexOf<Name>()));
    }

    template <PropertyName Name, class Related>
    RelatedObjects<Related> relatedMany() const {
        return RelatedObjects<Related>(membersAt(indexOf<Name>()));
    }

  private:
    static std::unique_ptr<ManagedObject> makeObject(const EntityDescription& entity) {
        return std::make_unique<Object>(entity);
    }
};

}  // namespace corvane
