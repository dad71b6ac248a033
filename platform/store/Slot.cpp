#include "platform/store/Slot.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/foundation/Text.h"
#include "platform/foundation/Truncation.h"
#include "platform/store/ManagedObject.h"

namespace corvane {

namespace {

static_assert(sizeof(Slot) == 16, "one slot per property of every object");

bool isAscii(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= text.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        if (word & kHighBits) return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

template <class Integer>
std::int64_t clampedTo(std::int64_t value) {
    return std::clamp<std::int64_t>(value, std::numeric_limits<Integer>::min(),
                                    std::numeric_limits<Integer>::max());
}

std::int64_t clamped(std::int64_t value, PropertyKind kind) {
    switch (kind) {
        case PropertyKind::kBoolean:
            return value != 0 ? 1 : 0;
        case PropertyKind::kInt16:
            return clampedTo<std::int16_t>(value);
        case PropertyKind::kInt32:
            return clampedTo<std::int32_t>(value);
        case PropertyKind::kInt64:
        case PropertyKind::kDouble:
        case PropertyKind::kDate:
        case PropertyKind::kString:
        case PropertyKind::kTransformable:
        case PropertyKind::kToOne:
        case PropertyKind::kToMany:
            return value;
    }
    return value;
}

std::optional<double> numberOf(const Slot& slot) {
    if (const auto* integer = std::get_if<std::int64_t>(&slot)) return static_cast<double>(*integer);
    if (const auto* real = std::get_if<double>(&slot)) return *real;
    return std::nullopt;
}

std::optional<double> numberOf(const Value& value) {
    if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? 1 : 0;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
    if (const auto* real = std::get_if<double>(&value)) return *real;
    if (const auto* date = std::get_if<Date>(&value)) return date->time_since_epoch().count();
    return std::nullopt;
}

std::optional<Slot> integerSlot(const Value& value, PropertyKind kind) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return Slot(clamped(*integer, kind));
    const std::optional<double> number = numberOf(value);
    if (!number) return std::nullopt;
    return Slot(clamped(truncated<std::int64_t>(*number), kind));
}

std::optional<Slot> realSlot(const Value& value) {
    const std::optional<double> number = numberOf(value);
    if (!number) return std::nullopt;
    return slotFromDouble(*number);
}

// The row number of a to-one slot; none for nil and for an object that has no row.
std::optional<std::int64_t> rowNumberOf(const Slot& slot) {
    if (const auto* key = std::get_if<std::int64_t>(&slot)) return *key;
    const auto* object = std::get_if<ManagedObject*>(&slot);
    if (!object || (*object)->objectID().isTemporary) return std::nullopt;
    return (*object)->objectID().key;
}

}  // namespace

Slot defaultSlot(PropertyKind kind) {
    switch (kind) {
        case PropertyKind::kBoolean:
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
            return std::int64_t{0};
        case PropertyKind::kDouble:
            return 0.0;
        case PropertyKind::kDate:
        case PropertyKind::kString:
        case PropertyKind::kTransformable:
        case PropertyKind::kToOne:
        case PropertyKind::kToMany:
            return {};
    }
    return {};
}

std::optional<Slot> slotFromValue(const Value& value, PropertyKind kind) {
    if (isNil(value)) return Slot();
    switch (kind) {
        case PropertyKind::kBoolean:
        case PropertyKind::kInt16:
        case PropertyKind::kInt32:
        case PropertyKind::kInt64:
            return integerSlot(value, kind);
        case PropertyKind::kDouble:
        case PropertyKind::kDate:
            return realSlot(value);
        case PropertyKind::kString:
            if (const auto* text = std::get_if<std::u16string>(&value)) return slotFromText(*text);
            return std::nullopt;
        case PropertyKind::kTransformable:
            if (const auto* bytes = std::get_if<Bytes>(&value)) return slotFromBytes(bytes);
            return std::nullopt;
        case PropertyKind::kToOne:
        case PropertyKind::kToMany:
            return std::nullopt;
    }
    return std::nullopt;
}

Slot slotFromText(std::optional<std::u16string_view> text) {
    if (!text) return {};
    return std::make_unique<std::u16string>(*text);
}

Slot slotFromBytes(const Bytes* bytes) {
    if (!bytes) return {};
    return std::make_unique<Bytes>(*bytes);
}

Slot slotFromDouble(double value) {
    if (std::isnan(value)) return {};
    return value;
}

void assignUtf8(Slot& slot, std::string_view utf8) {
    auto* kept = std::get_if<std::unique_ptr<std::u16string>>(&slot);
    if (!kept) kept = &slot.emplace<std::unique_ptr<std::u16string>>(std::make_unique<std::u16string>());
    if (!isAscii(utf8)) {
        **kept = textFromUtf8(utf8);
        return;
    }
    (*kept)->resize(utf8.size());
    std::copy(utf8.begin(), utf8.end(), (*kept)->begin());
}

bool booleanOf(const Slot& slot) {
    const std::optional<double> number = numberOf(slot);
    return number && *number != 0;
}

std::int64_t integerOf(const Slot& slot, PropertyKind kind) {
    if (const auto* integer = std::get_if<std::int64_t>(&slot)) return clamped(*integer, kind);
    if (const auto* real = std::get_if<double>(&slot)) return clamped(truncated<std::int64_t>(*real), kind);
    return 0;
}

double doubleOf(const Slot& slot) { return numberOf(slot).value_or(0); }

std::optional<Date> dateOf(const Slot& slot) {
    const std::optional<double> seconds = numberOf(slot);
    if (!seconds || !std::isfinite(*seconds)) return std::nullopt;
    return Date(TimeInterval(*seconds));
}

std::optional<std::u16string_view> textOf(const Slot& slot) {
    const auto* text = std::get_if<std::unique_ptr<std::u16string>>(&slot);
    if (!text) return std::nullopt;
    return **text;
}

const Bytes* bytesOf(const Slot& slot) {
    const auto* bytes = std::get_if<std::unique_ptr<Bytes>>(&slot);
    return bytes ? bytes->get() : nullptr;
}

ValueView viewOf(const Slot& slot, PropertyKind kind) {
    if (const auto* integer = std::get_if<std::int64_t>(&slot)) {
        if (kind == PropertyKind::kToOne) return {};
        if (kind == PropertyKind::kBoolean && (*integer == 0 || *integer == 1)) return *integer == 1;
        if (kind == PropertyKind::kDate) return Date(TimeInterval(static_cast<double>(*integer)));
        return *integer;
    }
    if (const auto* real = std::get_if<double>(&slot)) {
        if (kind == PropertyKind::kDate) return Date(TimeInterval(*real));
        return *real;
    }
    if (const auto text = textOf(slot)) return *text;
    if (const Bytes* bytes = bytesOf(slot)) return std::span<const std::uint8_t>(*bytes);
    if (const auto* object = std::get_if<ManagedObject*>(&slot)) return *object;
    return {};
}

Value valueOf(const ValueView& view) {
    struct Copier {
        Value operator()(std::u16string_view text) const { return std::u16string(text); }
        Value operator()(std::span<const std::uint8_t> bytes) const {
            return Bytes(bytes.begin(), bytes.end());
        }
        Value operator()(std::monostate) const { return {}; }
        Value operator()(bool value) const { return value; }
        Value operator()(std::int64_t value) const { return value; }
        Value operator()(double value) const { return value; }
        Value operator()(Date value) const { return value; }
        Value operator()(ManagedObject* object) const { return object; }
    };
    return std::visit(Copier{}, view);
}

bool isSameValue(const Slot& a, const Slot& b) {
    const bool isReference =
        std::holds_alternative<ManagedObject*>(a) || std::holds_alternative<ManagedObject*>(b);
    if (isReference) {
        if (a == b) return true;
        const std::optional<std::int64_t> key = rowNumberOf(a);
        return key && key == rowNumberOf(b);
    }
    const auto* integerA = std::get_if<std::int64_t>(&a);
    const auto* integerB = std::get_if<std::int64_t>(&b);
    if (integerA && integerB) return *integerA == *integerB;
    if (const std::optional<double> number = numberOf(a)) return number == numberOf(b);
    if (const auto text = textOf(a)) return text == textOf(b);
    if (const Bytes* bytes = bytesOf(a)) return bytesOf(b) && *bytes == *bytesOf(b);
    return a.index() == b.index();
}

}  // namespace corvane
