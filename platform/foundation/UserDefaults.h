// A suite of user defaults: a property list of its own in the app-group container.
//
// Read afresh when the file has changed; written whole and atomically with the owner's rights only; keys of
// others are kept as they are. An absent key reads as 0 or false. A file that cannot be read as a property
// list reads as empty and is never written over.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/foundation/PropertyList.h"

namespace corvane {

class UserDefaults {
  public:
    /// @param file  the property list; an empty path holds nothing and keeps nothing
    explicit UserDefaults(std::filesystem::path file);

    std::optional<PropertyList> objectForKey(std::string_view key) const;

    /// A boolean, a number or the decimal number that a text begins with; 0 for anything else.
    std::int64_t integerForKey(std::string_view key) const;

    /// A boolean, a number other than 0, or a text that begins with Y, T or such a number.
    bool boolForKey(std::string_view key) const;

    /// @return false when the file could not be written or cannot be read; it is then as it was
    [[nodiscard]] bool setObject(std::string_view key, const PropertyList& value);
    [[nodiscard]] bool removeObjectForKey(std::string_view key);

  private:
    /// What tells one state of the file from another; times in nanoseconds.
    struct Stamp {
        std::int64_t modified = 0;
        std::int64_t changed = 0;
        std::int64_t size = -1;
        std::uint64_t inode = 0;
        bool operator==(const Stamp&) const = default;
    };

    const PropertyList::Dictionary& contents() const;
    const PropertyList* find(std::string_view key) const;
    Stamp stampOfFile() const;
    bool write(std::string_view key, const PropertyList* value);

    std::filesystem::path file_;
    mutable std::optional<Stamp> stamp_;  ///< of the file as read; none: to be read again
    mutable PropertyList::Dictionary contents_;
};

}  // namespace corvane
