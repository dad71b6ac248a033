// The character entities of HTML 4.01 and the tables that escaping and unescaping look them up in.
//
// An entity is its whole reference text, ampersand and semicolon included, and the one UTF-16 code unit that
// it stands for. `lang` and `rang` have the code points of HTML 4.01, U+2329 and U+232A.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace corvane {

struct HtmlEntity {
    std::u16string_view reference;  ///< "&quot;"
    char16_t unit = 0;

    bool operator==(const HtmlEntity&) const = default;
};

/// Entities in ascending order of their units, with an index by unit.
class HtmlEntityTable {
  public:
    /// @param entities  strictly ascending by unit, at most 255 of them; they outlive the table
    constexpr explicit HtmlEntityTable(std::span<const HtmlEntity> entities) : entities_(entities) {
        std::uint8_t position = 0;
        for (const HtmlEntity& entity : entities) positions_[entity.unit] = ++position;
    }

    constexpr std::span<const HtmlEntity> entities() const { return entities_; }

    constexpr bool contains(char16_t unit) const { return positions_[unit] != 0; }

    /// The entity of a unit that the table contains.
    constexpr const HtmlEntity& entityOfUnit(char16_t unit) const { return entities_[positions_[unit] - 1u]; }

  private:
    std::span<const HtmlEntity> entities_;
    // One byte a unit (the position from 1, 0 is none) answers several times faster than a binary search, and
    // ordinary text touches only a few cache lines of it.
    std::array<std::uint8_t, 0x10000> positions_ = {};
};

/// All 253: the Latin-1, symbol and special sets of HTML 4.01 and `apos`.
extern const HtmlEntityTable kHtmlEntities;

/// The 33 that markup and typography need: the special set of HTML 4.01 and `apos`.
extern const HtmlEntityTable kSpecialHtmlEntities;

/// The unit of a whole reference text ("&eacute;") of the full table; case counts.
std::optional<char16_t> unitOfHtmlReference(std::u16string_view reference);

}  // namespace corvane
