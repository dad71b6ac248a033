#include "PropertyListSamples.h"

namespace corvane {
namespace {

void appendBigEndian(Bytes& bytes, std::uint64_t number, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

}  // namespace

Bytes bytesOf(std::string_view text) { return {text.begin(), text.end()}; }

std::string repeated(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

std::string xmlPropertyList(std::string_view value) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + std::string(value) +
           "</plist>\n";
}

Bytes nestedBinary(std::uint32_t arrays, int fanOut, std::uint32_t last, std::string_view leaf) {
    constexpr int kSize = 4;  // of offsets and references
    constexpr std::uint8_t kArray = 0xA0;
    Bytes data = bytesOf("bplist00");
    Bytes offsets;
    for (std::uint32_t i = 0; i < arrays; ++i) {
        appendBigEndian(offsets, data.size(), kSize);
        data.push_back(static_cast<std::uint8_t>(kArray + fanOut));
        for (int n = 0; n < fanOut; ++n) appendBigEndian(data, i + 1 == arrays ? last : i + 1, kSize);
    }
    appendBigEndian(offsets, data.size(), kSize);
    data.insert(data.end(), leaf.begin(), leaf.end());
    const std::uint64_t table = data.size();
    data.insert(data.end(), offsets.begin(), offsets.end());
    data.insert(data.end(), {0, 0, 0, 0, 0, 0, kSize, kSize});
    appendBigEndian(data, arrays + 1, 8);
    appendBigEndian(data, 0, 8);
    appendBigEndian(data, table, 8);
    return data;
}

Bytes mutated(Bytes data, std::mt19937& random) {
    const auto below = [&random](std::size_t bound) { return random() % bound; };
    const std::size_t start = below(data.size());
    const std::size_t length = 1 + below(std::min<std::size_t>(data.size() - start, 16));
    const auto first = data.begin() + static_cast<std::ptrdiff_t>(start);
    switch (below(4)) {
        case 0:
            data.erase(first, first + static_cast<std::ptrdiff_t>(length));
            return data;
        case 1: {
            const Bytes piece(first, first + static_cast<std::ptrdiff_t>(length));
            data.insert(first, piece.begin(), piece.end());
            return data;
        }
        default:
            for (std::size_t n = 1 + below(4); n > 0; --n)
                data[below(data.size())] = static_cast<std::uint8_t>(random());
            return data;
    }
}

}  // namespace corvane
