// Key paths: "list.user.accountType", "subTasks.@count", "SELF".
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/store/ManagedObject.h"
#include "platform/store/ModelDescription.h"
#include "platform/store/Predicate.h"
#include "platform/store/Value.h"

namespace corvane {

struct KeyStep {
    std::string key;
    /// Where the last object had the key. Only a hint, always checked: it spares the search by name for every
    /// further object of an entity.
    mutable PropertyIndex position = 0;

    std::optional<PropertyIndex> indexIn(const EntityDescription& entity) const;
    bool operator==(const KeyStep& other) const { return key == other.key; }
};

struct KeyPath {
    std::vector<KeyStep> steps;  ///< none: the object itself
    bool isCount = false;        ///< the number of members of the to-many relationship at its end

    bool operator==(const KeyPath&) const = default;
};

/// More steps than this are refused.
inline constexpr std::size_t kMaxKeyPathSteps = 32;

/// Reads a key path. "#" before a key takes it as a key even where it is a word of the language.
std::variant<KeyPath, PredicateError> keyPathFromText(std::u16string_view text);

/// The text that reads as this key path.
std::u16string textFromKeyPath(const KeyPath& path);

/// The value of a path through to-one relationships: an attribute, an object, or the count at its end. Nil
/// where an object on the way or the key is missing; the count of a missing object is 0.
ValueView valueOfKeyPath(const ManagedObject& object, const KeyPath& path);

/// Whether one of the values of a path fulfils a condition: to-one relationships, then to-many ones, then
/// what `valueOfKeyPath` reads from each member. Without members, and without a to-many relationship, none
/// does.
bool anyValueOfKeyPath(const ManagedObject& object, const KeyPath& path,
                       const std::function<bool(const ValueView&)>& fulfils);

}  // namespace corvane
