#include "platform/foundation/PropertyListBounds.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace corvane {
namespace {

constexpr std::string_view kMagic = "bplist";
constexpr std::size_t kTrailerSize = 32;

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
    // A container's references; the objects of other kinds end the walk.
    struct References {
        std::uint64_t offset = 0;
        std::uint64_t count = 0;
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

    // none: the object is cut off or claims more references than the data has bytes
    std::optional<References> referencesAt(std::uint64_t offset) const {
        constexpr std::uint64_t kCountFollows = 15;
        constexpr int kInteger = 0x1, kArray = 0xA, kOrderedSet = 0xB, kSet = 0xC, kDictionary = 0xD;
        const std::optional<std::uint64_t> marker = integerAt(offset, 1);
        if (!marker) return std::nullopt;
        const auto kind = static_cast<int>(*marker >> 4);
        if (kind != kArray && kind != kOrderedSet && kind != kSet && kind != kDictionary) return References{};
        References references{offset + 1, *marker & 15};
        if (references.count == kCountFollows) {
            const std::optional<std::uint64_t> sizeMarker = integerAt(offset + 1, 1);
            if (!sizeMarker || *sizeMarker >> 4 != kInteger || (*sizeMarker & 15) > 3) return std::nullopt;
            const std::uint64_t size = std::uint64_t{1} << (*sizeMarker & 15);
            const std::optional<std::uint64_t> count = integerAt(offset + 2, size);
            if (!count) return std::nullopt;
            references = {offset + 2 + size, *count};
        }
        if (references.count > data_.size()) return std::nullopt;
        if (kind == kDictionary) references.count *= 2;
        return references;
    }

    bool visit(std::uint64_t object, int depth) {
        if (depth > kMaximumPropertyListDepth || ++visited_ > kMaximumPropertyListNodes) return false;
        const std::optional<std::uint64_t> offset = offsetOfObject(object);
        if (!offset) return false;
        const std::optional<References> references = referencesAt(*offset);
        if (!references) return false;
        for (std::uint64_t i = 0; i < references->count; ++i) {
            const auto child = integerAt(references->offset + i * referenceSize_, referenceSize_);
            if (!child || !visit(*child, depth + 1)) return false;
        }
        return true;
    }

    std::span<const std::uint8_t> data_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t tableOffset_ = 0;
    int visited_ = 0;
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
