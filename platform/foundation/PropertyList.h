// Property lists, binary and XML, as values (through libplist).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/Date.h"

namespace corvane {

using Bytes = std::vector<std::uint8_t>;

/// One node of a property list. Dictionaries keep their keys sorted; texts are UTF-8.
struct PropertyList {
    struct Uid {
        std::uint64_t value = 0;
        bool operator==(const Uid&) const = default;
    };
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList, std::less<>>;

    std::variant<bool, std::int64_t, double, std::string, Date, Bytes, Uid, Array, Dictionary> value = false;

    template <class T>
    const T* get() const {
        return std::get_if<T>(&value);
    }
    /// The value under a key of a dictionary; null when this is none or the key is missing.
    const PropertyList* find(std::string_view key) const;
    /// A boolean, integer, real (truncated) or the decimal number that a text begins with; clamped to 64
    /// bits. None for anything else.
    std::optional<std::int64_t> integer() const;
    /// An integer or real as a number.
    std::optional<double> number() const;

    bool operator==(const PropertyList&) const = default;
};

/// Reads a binary or XML property list. Depth (64), number of nodes (100,000) and size (16 MiB) are bounded;
/// a broken, cyclic or oversized one gives none.
std::optional<PropertyList> propertyListFromData(std::span<const std::uint8_t> data);

Bytes binaryDataFromPropertyList(const PropertyList& list);

/// The binary form of a list whose root is a dictionary, with one value set or, where `value` is null, taken
/// away. Everything else stays exactly, also what a `PropertyList` cannot hold (integers of 64 bits without a
/// sign). No data at all counts as an empty dictionary.
///
/// @return none when the data is no dictionary within the bounds
std::optional<Bytes> dataBySettingKey(std::span<const std::uint8_t> data, const std::string& key,
                                      const PropertyList* value);

}  // namespace corvane
