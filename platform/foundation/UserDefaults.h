// A suite of user defaults: a property list of its own in the app-group container.
//
// Read afresh when the file has changed; written whole and atomically with the owner's rights only; keys of
// others are kept as they are. An absent key reads as 0 or false.
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
    std::int64_t integerForKey(std::string_view key) const;
    bool boolForKey(std::string_view key) const;

    /// @return false when the file could not be written; it is then as it was
    [[nodiscard]] bool setObject(std::string_view key, PropertyList value);
    [[nodiscard]] bool removeObjectForKey(std::string_view key);

  private:
    const PropertyList::Dictionary& contents() const;
    bool write(PropertyList::Dictionary contents);

    struct Stamp {
        std::int64_t modified = 0;
        std::int64_t size = -1;
        std::uint64_t inode = 0;
        bool operator==(const Stamp&) const = default;
    };
    Stamp stampOfFile() const;

    std::filesystem::path file_;
    mutable Stamp stamp_;
    mutable PropertyList::Dictionary contents_;
};

}  // namespace corvane
