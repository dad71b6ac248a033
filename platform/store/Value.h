// Values as predicates, fetches and the file see them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/Date.h"
#include "platform/foundation/PropertyList.h"

namespace corvane {

class ManagedObject;

/// A stored or bound value. std::monostate is nil: the platform's null marker, SQL's NULL. A null
/// ManagedObject pointer is never held; it is nil instead.
using Value =
    std::variant<std::monostate, bool, std::int64_t, double, Date, std::u16string, Bytes, ManagedObject*>;

inline bool isNil(const Value& value) { return std::holds_alternative<std::monostate>(value); }

/// A value looked at where it lies, without a copy.
using ValueView = std::variant<std::monostate, bool, std::int64_t, double, Date, std::u16string_view,
                               std::span<const std::uint8_t>, ManagedObject*>;

ValueView viewOf(const Value& value);

}  // namespace corvane
