#include "platform/foundation/PropertyListBounds.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace corvane {
namespace {

constexpr std::string_view kMagic = "bplist";
constexpr std::size_t kTrailerSize = 32;

// Texts and data together, each as often as it is used.
constexpr std::size_t kMaximumExpandedSize = 4 * kMaximumPropertyListSize;

// Containers of an XML list, wherever they stand: each may be nested in the last and costs a stack frame.
constexpr std::size_t kMaximumXmlContainers = 8192;
constexpr std::size_t kMaximumXmlTags = std::size_t{4} * kMaximumPropertyListNodes;

std::string_view textOf(std::span<const std::uint8_t> data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

std::size_t occurrences(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

// Walks the containers of a binary property list as its parser will.
class BinaryWalk {
  public:
    explicit BinaryWalk(std::span<const std::uint8_t> data) : data_(data) {}

    bool staysBounded() {
        if (data_.size() < kMagic.size() + kTrailerSize) return false;
        const std::uint64_t trailer = data_.size() - kTrailerSize;
        offsetSize_ = data_[trailer + 6];
        referenceSize_ = data_[trailer + 7];
        if (!isIntegerSize(offsetSize_) || !isIntegerSize(referenceSize_)) return false;
        objectCount_ = *integerAt(trailer + 8, 8);
        const std::uint64_t root = *integerAt(trailer + 16, 8);
        tableOffset_ = *integerAt(trailer + 24, 8);
        return visit(root, 1);
    }

  private:
    static constexpr int kInteger = 0x1;
    static constexpr int kData = 0x4;
    static constexpr int kAsciiText = 0x5;
    static constexpr int kUtf16Text = 0x6;
    static constexpr int kArray = 0xA;
    static constexpr int kOrderedSet = 0xB;
    static constexpr int kSet = 0xC;
    static constexpr int kDictionary = 0xD;

    // What an object's first bytes say. Only data, texts and containers have a count here.
    struct Header {
        int kind = 0;
        std::uint64_t count = 0;
        std::uint64_t contents = 0;  ///< offset of what follows kind and count
    };

    static bool isIntegerSize(std::uint64_t size) { return size >= 1 && size <= 8; }

    std::optional<std::uint64_t> integerAt(std::uint64_t offset, std::uint64_t size) const {
        if (offset > data_.size() || size > data_.size() - offset) return std::nullopt;
        std::uint64_t value = 0;
        for (const std::uint8_t byte : data_.subspan(offset, size)) value = value << 8 | byte;
        return value;
    }

    std::optional<std::uint64_t> offsetOfObject(std::uint64_t object) const {
        if (object >= objectCount_ || object > data_.size()) return std::nullopt;
        const std::uint64_t place = object * offsetSize_;
        if (tableOffset_ > data_.size() || place > data_.size() - tableOffset_) return std::nullopt;
        return integerAt(tableOffset_ + place, offsetSize_);
    }

    // none: there is no such object, it is cut off, or it claims a longer content than there is data
    std::optional<Header> headerOfObject(std::uint64_t object) const {
        constexpr std::uint64_t kCountFollows = 15;
        const std::optional<std::uint64_t> offset = offsetOfObject(object);
        const std::optional<std::uint64_t> marker = offset ? integerAt(*offset, 1) : std::nullopt;
        if (!marker) return std::nullopt;
        Header header{static_cast<int>(*marker >> 4), *marker & 15, *offset + 1};
        if (header.kind < kData || header.count != kCountFollows) return header;
        const std::optional<std::uint64_t> sizeMarker = integerAt(header.contents, 1);
        if (!sizeMarker || *sizeMarker >> 4 != kInteger || (*sizeMarker & 15) > 3) return std::nullopt;
        const std::uint64_t size = std::uint64_t{1} << (*sizeMarker & 15);
        const std::optional<std::uint64_t> count = integerAt(header.contents + 1, size);
        if (!count || *count > data_.size()) return std::nullopt;
        return Header{header.kind, *count, header.contents + 1 + size};
    }

    // Counts one more use of an object. The parser copies texts and data at every use.
    bool isWithinBounds(const Header& header) {
        const std::uint64_t unitSize = header.kind == kUtf16Text ? 2 : 1;
        if (header.kind >= kData && header.kind <= kUtf16Text) bytes_ += header.count * unitSize;
        return ++nodes_ <= kMaximumPropertyListNodes && bytes_ <= kMaximumExpandedSize;
    }

    // The parser ends the program at a key with a NUL inside.
    bool isKey(std::uint64_t object) {
        const std::optional<Header> header = headerOfObject(object);
        if (!header || !isWithinBounds(*header)) return false;
        if (header->kind != kAsciiText && header->kind != kUtf16Text) return false;
        const std::uint64_t unitSize = header->kind == kUtf16Text ? 2 : 1;
        for (std::uint64_t i = 0; i < header->count; ++i) {
            const auto unit = integerAt(header->contents + i * unitSize, unitSize);
            if (!unit || *unit == 0) return false;
        }
        return true;
    }

    std::optional<std::uint64_t> referenceAt(const Header& container, std::uint64_t index) const {
        return integerAt(container.contents + index * referenceSize_, referenceSize_);
    }

    bool visit(std::uint64_t object, int depth) {
        const std::optional<Header> header = headerOfObject(object);
        if (depth > kMaximumPropertyListDepth || !header || !isWithinBounds(*header)) return false;
        switch (header->kind) {
            case kArray:
            case kOrderedSet:
            case kSet:
                return visitAll(*header, 0, depth);
            case kDictionary:
                return hasKeys(*header) && visitAll(*header, header->count, depth);
            default:
                return true;
        }
    }

    // A dictionary's references are its keys, then as many values.
    bool hasKeys(const Header& dictionary) {
        for (std::uint64_t i = 0; i < dictionary.count; ++i) {
            const std::optional<std::uint64_t> key = referenceAt(dictionary, i);
            if (!key || !isKey(*key)) return false;
        }
        return true;
    }

    bool visitAll(const Header& container, std::uint64_t first, int depth) {
        for (std::uint64_t i = first; i < first + container.count; ++i) {
            const std::optional<std::uint64_t> child = referenceAt(container, i);
            if (!child || !visit(*child, depth + 1)) return false;
        }
        return true;
    }

    std::span<const std::uint8_t> data_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t tableOffset_ = 0;
    int nodes_ = 0;
    std::uint64_t bytes_ = 0;
};

}  // namespace

bool isBinaryPropertyList(std::span<const std::uint8_t> data) { return textOf(data).starts_with(kMagic); }

bool isBoundedBinaryPropertyList(std::span<const std::uint8_t> data) {
    return data.size() <= kMaximumPropertyListSize && BinaryWalk(data).staysBounded();
}

bool isBoundedXmlPropertyList(std::span<const std::uint8_t> data) {
    if (data.size() > kMaximumPropertyListSize) return false;
    const std::string_view text = textOf(data);
    return occurrences(text, "<array") + occurrences(text, "<dict") <= kMaximumXmlContainers &&
           occurrences(text, "<") <= kMaximumXmlTags;
}

}  // namespace corvane
