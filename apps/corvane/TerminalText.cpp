#include "apps/corvane/TerminalText.h"

#include <iconv.h>
#include <langinfo.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "apps/host/WritingDirection.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

constexpr char16_t kEllipsis = u'…';
constexpr char32_t kReplacement = U'\uFFFD';
constexpr char32_t kEmojiSelector = U'\uFE0F';

bool isPlain(char16_t unit) { return unit >= 0x20 && unit < 0x7F; }

// The pictures of the controls stand in Unicode in the controls' own order.
char32_t harmless(char32_t c) {
    if (c == U'\t') return U' ';
    if (c < 0x20) return U'\u2400' + c;
    if (c == 0x7F) return U'\u2421';
    if (c == 0x2028 || c == 0x2029) return U'\u2424';
    const bool isControl = c < 0xA0 && c > 0x7F;
    const bool isAnnotation = c >= 0xFFF9 && c <= 0xFFFB;
    return isControl || isAnnotation || turnsWritingDirection(c) ? kReplacement : c;
}

// A text's code points, unpaired surrogates as replacement characters.
template <class Function>
void forEachCodePoint(std::u16string_view text, Function function) {
    for (std::size_t i = 0; i < text.size();) {
        UChar32 c = 0;
        U16_NEXT_OR_FFFD(text, i, text.size(), c);
        function(static_cast<char32_t>(c));
    }
}

void append(std::u16string& text, char32_t c) {
    if (U_IS_BMP(c)) {
        text.push_back(static_cast<char16_t>(c));
    } else {
        text.push_back(U16_LEAD(c));
        text.push_back(U16_TRAIL(c));
    }
}

std::size_t cellsOfCodePoint(char32_t character) {
    constexpr char32_t kSoftHyphen = 0xAD;
    const auto c = static_cast<UChar32>(character);
    constexpr std::uint32_t kWithoutWidth = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK | U_GC_CC_MASK;
    if ((U_GET_GC_MASK(c) & kWithoutWidth) != 0 && character != kSoftHyphen) return 0;
    const int syllable = u_getIntPropertyValue(c, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO) return 0;
    const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

// A sequence that makes one emoji is as wide as one, whatever it is made of.
std::size_t cellsOfCluster(std::u16string_view cluster) {
    constexpr std::size_t kEmojiCells = 2;
    std::size_t cells = 0;
    bool isEmoji = false;
    forEachCodePoint(cluster, [&](char32_t c) {
        const bool isShownAsEmoji = u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_EMOJI_PRESENTATION);
        isEmoji = isEmoji || isShownAsEmoji || c == kEmojiSelector;
        cells += cellsOfCodePoint(c);
    });
    return isEmoji ? kEmojiCells : cells;
}

struct BreakIteratorCloser {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};
using BreakIterator = std::unique_ptr<UBreakIterator, BreakIteratorCloser>;

// Walks over the grapheme clusters of a text, which stays where it is meanwhile.
class Clusters {
  public:
    explicit Clusters(std::u16string_view text) : text_(text) {
        static const BreakIterator iterator = [] {
            UErrorCode status = U_ZERO_ERROR;
            return BreakIterator(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
        }();
        UErrorCode status = U_ZERO_ERROR;
        iterator_ = iterator.get();
        if (iterator_) ubrk_setText(iterator_, text.data(), static_cast<std::int32_t>(text.size()), &status);
    }

    /// Empty at the end.
    std::u16string_view next() {
        const std::size_t start = end_;
        end_ = std::min(endOfCluster(), text_.size());
        return text_.substr(start, end_ - start);
    }

  private:
    std::size_t endOfCluster() {
        if (end_ == text_.size() || !iterator_) return end_ + 1;
        return static_cast<std::size_t>(ubrk_following(iterator_, static_cast<std::int32_t>(end_)));
    }

    std::u16string_view text_;
    UBreakIterator* iterator_ = nullptr;
    std::size_t end_ = 0;
};

// How much of a text is worth looking at for so many cells.
std::u16string_view beginning(std::u16string_view text, std::size_t cells) {
    constexpr std::size_t kUnitsPerCell = 32;
    const std::size_t most = (std::min(cells, text.size()) + 1) * kUnitsPerCell;
    return text.substr(0, most);
}

struct Converter {
    explicit Converter(const char* characterSet)
        : handle(iconv_open((std::string(characterSet) + "//TRANSLIT").c_str(), "UTF-8")) {}
    ~Converter() {
        if (isOpen()) iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool isOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }

    iconv_t handle;
};

// Other character sets than Unicode know no isolates, and nothing can stand for them.
std::string withoutIsolates(std::string_view utf8) {
    std::u16string text = textFromUtf8(utf8);
    std::erase_if(text, turnsWritingDirection);
    return utf8FromText(text);
}

std::size_t lengthOfSequence(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xC0) return 1;
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

std::string converted(const Converter& converter, std::string_view utf8) {
    std::string source(utf8);
    std::string result;
    char* in = source.data();
    std::size_t inLeft = source.size();
    while (inLeft > 0) {
        char buffer[512];
        char* out = buffer;
        std::size_t outLeft = sizeof buffer;
        const std::size_t failure = iconv(converter.handle, &in, &inLeft, &out, &outLeft);
        result.append(buffer, sizeof buffer - outLeft);
        if (failure != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
        const std::size_t skipped = std::min(lengthOfSequence(*in), inLeft);
        in += skipped;
        inLeft -= skipped;
        result.push_back('?');
    }
    return result;
}

}  // namespace

std::u16string terminalText(std::u16string_view text) {
    if (std::ranges::all_of(text, isPlain)) return std::u16string(text);
    std::u16string result;
    result.reserve(text.size());
    forEachCodePoint(text, [&result](char32_t c) { append(result, harmless(c)); });
    return result;
}

std::string terminalUtf8(std::string_view utf8) { return utf8FromText(terminalText(textFromUtf8(utf8))); }

std::size_t displayWidth(std::u16string_view text) {
    if (std::ranges::all_of(text, isPlain)) return text.size();
    Clusters clusters(text);
    std::size_t cells = 0;
    for (auto cluster = clusters.next(); !cluster.empty(); cluster = clusters.next()) {
        cells += cellsOfCluster(cluster);
    }
    return cells;
}

std::u16string cutToWidth(std::u16string_view text, std::size_t width) {
    const std::u16string_view start = beginning(text, width);
    std::size_t cells = 0;
    std::size_t kept = 0;
    std::size_t seen = 0;
    Clusters clusters(start);
    for (auto cluster = clusters.next(); !cluster.empty() && cells <= width; cluster = clusters.next()) {
        cells += cellsOfCluster(cluster);
        seen += cluster.size();
        if (cells + 1 <= width) kept = seen;
    }
    if (cells <= width && start.size() == text.size()) return std::u16string(text);
    std::u16string result(start.substr(0, kept));
    if (width > 0) result.push_back(kEllipsis);
    return result;
}

bool isUtf8Locale() { return std::string_view(nl_langinfo(CODESET)) == "UTF-8"; }

std::string inCharacterSetOfLocale(std::string_view utf8) {
    if (isUtf8Locale()) return std::string(utf8);
    const Converter toLocale(nl_langinfo(CODESET));
    static const Converter toAscii("ASCII");
    return converted(toLocale.isOpen() ? toLocale : toAscii, withoutIsolates(utf8));
}

}  // namespace corvane
