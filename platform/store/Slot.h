// One stored value of an object: what its column held, or the end of a relationship. For the store's own
// sources.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/store/ModelDescription.h"
#include "platform/store/Value.h"

namespace corvane {

/// The members of a to-many relationship, in its own order.
struct MemberList {
    std::vector<ManagedObject*> objects;
    /// What the last reading replaced: somebody may still be walking over it.
    std::vector<ManagedObject*> replaced;
    std::uint32_t epoch = 0;  ///< of the load that filled it; 0: only what unsaved changes have put in
};

/// NULL, INTEGER, REAL, TEXT and BLOB stay apart, whatever the attribute's type, so that a value of a foreign
/// kind is neither lost nor repaired by accident. A to-one column is a row number until somebody asks for the
/// object. 16 bytes.
using Slot = std::variant<std::monostate, std::int64_t, double, std::unique_ptr<std::u16string>,
                          std::unique_ptr<Bytes>, ManagedObject*, std::unique_ptr<MemberList>>;

/// What an attribute holds that was never set, or whose column the file lacks.
Slot defaultSlot(PropertyKind kind);

/// The slot of a value for an attribute; none when the value's kind does not fit.
std::optional<Slot> slotFromValue(const Value& value, PropertyKind kind);

Slot slotFromText(std::optional<std::u16string_view> text);
Slot slotFromBytes(const Bytes* bytes);
/// NaN is NULL, as SQLite stores it.
Slot slotFromDouble(double value);

/// Brings text of the file into a slot; the buffer of a text that was there is used again.
void assignUtf8(Slot& slot, std::string_view utf8);

// As accessors read: a foreign kind of value is 0 or none.
bool booleanOf(const Slot& slot);
std::int64_t integerOf(const Slot& slot, PropertyKind kind);  ///< clamped to the attribute's width
double doubleOf(const Slot& slot);
std::optional<Date> dateOf(const Slot& slot);  ///< none for an infinite one
std::optional<std::u16string_view> textOf(const Slot& slot);
const Bytes* bytesOf(const Slot& slot);

/// As predicates read. A to-one row number gives no object here.
ValueView viewOf(const Slot& slot, PropertyKind kind);
Value valueOf(const ValueView& view);

/// Numbers compare by value whatever their storage class, a to-one object by its row number.
bool isSameValue(const Slot& a, const Slot& b);

}  // namespace corvane
