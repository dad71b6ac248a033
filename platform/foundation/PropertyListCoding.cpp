// Property lists through libplist.
#include <plist/plist.h>

#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "platform/foundation/PropertyList.h"
#include "platform/foundation/PropertyListBounds.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

struct MemoryDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
using Memory = std::unique_ptr<void, MemoryDeleter>;

// The place of the first object of a binary property list, right behind "bplist00".
constexpr std::size_t kFirstObject = 8;

const char* charactersOf(const std::uint8_t* bytes) { return reinterpret_cast<const char*>(bytes); }

Bytes binaryDataOfNode(plist_t node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    const Memory memory(bytes);
    return {bytes, bytes + length};
}

Node parsedNode(std::span<const std::uint8_t> data) {
    const bool isBinary = isBinaryPropertyList(data);
    if (isBinary ? !isBoundedBinaryPropertyList(data) : !isBoundedXmlPropertyList(data)) return nullptr;
    plist_t node = nullptr;
    const auto length = static_cast<std::uint32_t>(data.size());
    if (isBinary) {
        plist_from_bin(charactersOf(data.data()), length, &node);
    } else {
        plist_from_xml(charactersOf(data.data()), length, &node);
    }
    return Node(node);
}

// The library's own accessors cut a date down to 32 bits of seconds; its binary form has the whole number.
Date dateOfNode(plist_t node) {
    const Bytes data = binaryDataOfNode(node);
    std::uint64_t bits = 0;
    for (std::size_t i = 1; i <= sizeof bits && kFirstObject + i < data.size(); ++i) {
        bits = bits << 8 | data[kFirstObject + i];
    }
    return Date(TimeInterval(std::bit_cast<double>(bits)));
}

Node nodeOfDate(Date date) {
    constexpr std::uint8_t kDateMarker = 0x33;
    constexpr std::uint8_t kTableOffset = kFirstObject + 1 + sizeof(double);
    Bytes data = {'b', 'p', 'l', 'i', 's', 't', '0', '0', kDateMarker};
    const auto bits = std::bit_cast<std::uint64_t>(date.time_since_epoch().count());
    for (int shift = 56; shift >= 0; shift -= 8) data.push_back(static_cast<std::uint8_t>(bits >> shift));
    data.push_back(kFirstObject);
    std::array<std::uint8_t, 32> trailer{};
    trailer[6] = 1;   // bytes of an offset
    trailer[7] = 1;   // bytes of a reference
    trailer[15] = 1;  // objects
    trailer[31] = kTableOffset;
    data.insert(data.end(), trailer.begin(), trailer.end());
    return parsedNode(data);
}

std::optional<PropertyList> valueOfNode(plist_t node, int depth);

std::optional<PropertyList> arrayOfNode(plist_t node, int depth) {
    PropertyList::Array array;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    const Memory memory(iterator);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator, &item);
        if (item == nullptr) return PropertyList{std::move(array)};
        std::optional<PropertyList> value = valueOfNode(item, depth + 1);
        if (!value) return std::nullopt;
        array.push_back(*std::move(value));
    }
}

std::optional<PropertyList> dictionaryOfNode(plist_t node, int depth) {
    PropertyList::Dictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const Memory memory(iterator);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        const Memory keyMemory(key);
        if (item == nullptr) return PropertyList{std::move(dictionary)};
        std::optional<PropertyList> value = valueOfNode(item, depth + 1);
        if (!value || key == nullptr) return std::nullopt;
        dictionary.insert_or_assign(key, *std::move(value));
    }
}

PropertyList booleanOfNode(plist_t node) {
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return {value != 0};
}

PropertyList integerOfNode(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return {static_cast<std::int64_t>(value)};
}

PropertyList realOfNode(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    return {value};
}

PropertyList uidOfNode(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uid_val(node, &value);
    return {PropertyList::Uid{value}};
}

PropertyList stringOfNode(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return {text == nullptr ? std::string() : std::string(text, length)};
}

PropertyList bytesOfNode(plist_t node) {
    std::uint64_t length = 0;
    const char* bytes = plist_get_data_ptr(node, &length);
    return {bytes == nullptr ? Bytes() : Bytes(bytes, bytes + length)};
}

std::optional<PropertyList> valueOfNode(plist_t node, int depth) {
    if (depth > kMaximumPropertyListDepth) return std::nullopt;
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN:
            return booleanOfNode(node);
        case PLIST_UINT:
            return integerOfNode(node);
        case PLIST_REAL:
            return realOfNode(node);
        case PLIST_KEY:
        case PLIST_STRING:
            return stringOfNode(node);
        case PLIST_ARRAY:
            return arrayOfNode(node, depth);
        case PLIST_DICT:
            return dictionaryOfNode(node, depth);
        case PLIST_DATE:
            return PropertyList{dateOfNode(node)};
        case PLIST_DATA:
            return bytesOfNode(node);
        case PLIST_UID:
            return uidOfNode(node);
        case PLIST_NONE:
            return std::nullopt;
    }
    return std::nullopt;
}

// Ill-formed UTF-8 would come out of the library as other characters.
std::string wellFormed(const std::string& utf8) { return utf8FromText(textFromUtf8(utf8)); }

// Builds the library's node of each kind of value.
struct NodeBuilder {
    Node operator()(bool value) const { return Node(plist_new_bool(value ? 1 : 0)); }
    Node operator()(std::int64_t value) const {
        return Node(plist_new_uint(static_cast<std::uint64_t>(value)));
    }
    Node operator()(double value) const { return Node(plist_new_real(value)); }
    Node operator()(const std::string& value) const {
        return Node(plist_new_string(wellFormed(value).c_str()));
    }
    Node operator()(Date value) const { return nodeOfDate(value); }
    Node operator()(const Bytes& value) const {
        return Node(plist_new_data(charactersOf(value.data()), value.size()));
    }
    Node operator()(PropertyList::Uid value) const { return Node(plist_new_uid(value.value)); }
    Node operator()(const PropertyList::Array& array) const {
        Node node(plist_new_array());
        for (const PropertyList& item : array) {
            plist_array_append_item(node.get(), std::visit(*this, item.value).release());
        }
        return node;
    }
    Node operator()(const PropertyList::Dictionary& dictionary) const {
        Node node(plist_new_dict());
        for (const auto& [key, item] : dictionary) {
            plist_dict_set_item(node.get(), wellFormed(key).c_str(), std::visit(*this, item.value).release());
        }
        return node;
    }
};

}  // namespace

std::optional<PropertyList> propertyListFromData(std::span<const std::uint8_t> data) {
    const Node node = parsedNode(data);
    if (!node) return std::nullopt;
    return valueOfNode(node.get(), 1);
}

Bytes binaryDataFromPropertyList(const PropertyList& list) {
    return binaryDataOfNode(std::visit(NodeBuilder(), list.value).get());
}

std::optional<Bytes> dataBySettingKey(std::span<const std::uint8_t> data, const std::string& key,
                                      const PropertyList* value) {
    const Node node = data.empty() ? Node(plist_new_dict()) : parsedNode(data);
    if (!node || plist_get_node_type(node.get()) != PLIST_DICT) return std::nullopt;
    plist_dict_remove_item(node.get(), key.c_str());
    if (value != nullptr) {
        plist_dict_set_item(node.get(), key.c_str(), std::visit(NodeBuilder(), value->value).release());
    }
    return binaryDataOfNode(node.get());
}

}  // namespace corvane
