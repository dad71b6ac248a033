#include "platform/store/PredicateLexer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <system_error>

#include "platform/foundation/Localization.h"

namespace corvane {

namespace {

bool isSpace(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == u'\u00A0'; }
bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool isWordPart(char16_t unit) { return isNamePart(unit) || unit == u'.' || unit == u'@' || unit == u'#'; }
bool isSign(char16_t unit) { return unit == u'-' || unit == u'+'; }

template <class Accepts>
std::size_t runLength(std::u16string_view text, const Accepts& accepts) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, accepts) - text.begin());
}

// The length of a number's sign, digits, letters and point, and of the sign of its exponent.
std::size_t numberLength(std::u16string_view text) {
    std::size_t length = isSign(text.front()) ? 1 : 0;
    const bool isHexadecimal =
        text.substr(length).starts_with(u"0x") || text.substr(length).starts_with(u"0X");
    for (; length < text.size(); ++length) {
        const bool isExponentSign =
            isSign(text[length]) && !isHexadecimal && (text[length - 1] | 0x20) == u'e';
        if (!isNamePart(text[length]) && text[length] != u'.' && !isExponentSign) break;
    }
    return length;
}

bool beginsNumber(std::u16string_view text) {
    if (!text.empty() && isSign(text.front())) text.remove_prefix(1);
    if (!text.empty() && text.front() == u'.') text.remove_prefix(1);
    return !text.empty() && isDigit(text.front());
}

std::optional<int> hexDigit(char16_t unit) {
    if (isDigit(unit)) return unit - u'0';
    const int lower = unit | 0x20;
    if (unit < 0x80 && lower >= 'a' && lower <= 'f') return lower - 'a' + 10;
    return std::nullopt;
}

// "\" and the unit behind it.
std::optional<char16_t> simpleEscape(char16_t unit) {
    switch (unit) {
        case u'n':
            return u'\n';
        case u't':
            return u'\t';
        case u'r':
            return u'\r';
        case u'"':
        case u'\'':
        case u'\\':
            return unit;
        default:
            return std::nullopt;
    }
}

std::optional<char16_t> fourHexDigits(std::u16string_view text) {
    if (text.size() < 4) return std::nullopt;
    int value = 0;
    for (const char16_t unit : text.substr(0, 4)) {
        const std::optional<int> digit = hexDigit(unit);
        if (!digit) return std::nullopt;
        value = value * 16 + *digit;
    }
    return static_cast<char16_t>(value);
}

constexpr const char* kEscapeMessage =
    textKey("expected an escape: \\n \\t \\r \\\" \\' \\\\ or \\u and four hexadecimal digits");

struct QuotedUnit {
    char16_t unit = 0;
    std::size_t length = 1;  ///< of what stands for it in the text
};

// The first unit inside quotes; none for an escape that there is not. A lone "\" at the end stands for
// itself, as the quotes do not close then.
std::optional<QuotedUnit> quotedUnit(std::u16string_view text) {
    if (text.front() != u'\\' || text.size() == 1) return QuotedUnit{text.front()};
    const bool isHex = text[1] == u'u';
    const std::optional<char16_t> unit = isHex ? fourHexDigits(text.substr(2)) : simpleEscape(text[1]);
    if (!unit) return std::nullopt;
    return QuotedUnit{*unit, isHex ? std::size_t{6} : std::size_t{2}};
}

// A number by its whole text: a 64-bit integer, decimal or hexadecimal, or a real.
struct NumberText {
    std::optional<Value> value;
    const char* message = textKey("expected a number");
};

NumberText integerFromText(std::string_view digits, bool isNegative, int base) {
    // The sign stays with the digits: the least integer has no positive counterpart.
    const std::string text = (isNegative ? "-" : "") + std::string(digits);
    std::int64_t integer = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), integer, base);
    if (status == std::errc::result_out_of_range)
        return {std::nullopt, textKey("the integer does not fit in 64 bits")};
    if (status != std::errc() || end != text.data() + text.size()) return {};
    return {integer};
}

NumberText realFromText(std::string_view digits, bool isNegative) {
    double real = 0;
    const char* const last = digits.data() + digits.size();
    const auto [end, status] = std::from_chars(digits.data(), last, real);
    if (status == std::errc::result_out_of_range)
        return {std::nullopt, textKey("the number is beyond the range of reals")};
    if (status != std::errc() || end != last) return {};
    return {isNegative ? -real : real};
}

NumberText numberFromText(std::u16string_view text) {
    const bool isNegative = text.front() == u'-';
    if (isSign(text.front())) text.remove_prefix(1);
    const std::string ascii(text.begin(), text.end());
    if (ascii.starts_with("0x") || ascii.starts_with("0X")) {
        return integerFromText(std::string_view(ascii).substr(2), isNegative, 16);
    }
    const bool isReal = ascii.find_first_of(".eE") != std::string::npos;
    return isReal ? realFromText(ascii, isNegative) : integerFromText(ascii, isNegative, 10);
}

constexpr std::u16string_view kSymbols[] = {u"==", u"!=", u"<>", u"<=", u"=<", u">=", u"=>",
                                            u"&&", u"||", u"=",  u"<",  u">",  u"!",  u"(",
                                            u")",  u"{",  u"}",  u"[",  u"]",  u","};

}  // namespace

Token PredicateLexer::next() {
    position_ += runLength(rest(), isSpace);
    if (position_ == text_.size()) return token(Token::Kind::kEnd, 0);
    const char16_t first = text_[position_];
    if (isNameStart(first) || first == u'#' || first == u'@') return word();
    if (beginsNumber(rest())) return number();
    if (first == u'"' || first == u'\'') return quotedText();
    if (first == u'$') return variable();
    if (first == u'%') return placeholder();
    return symbol();
}

Token PredicateLexer::word() {
    Token word = token(Token::Kind::kWord, runLength(rest(), isWordPart));
    word.keyword = keywordFromText(word.text);
    return word;
}

Token PredicateLexer::number() {
    Token number = token(Token::Kind::kLiteral, numberLength(rest()));
    NumberText read = numberFromText(number.text);
    if (!read.value) return error(number.position, read.message);
    number.value = *std::move(read.value);
    return number;
}

Token PredicateLexer::quotedText() {
    const std::size_t start = position_;
    const char16_t quote = text_[start];
    std::u16string content;
    std::size_t i = start + 1;
    while (i < text_.size() && text_[i] != quote) {
        const std::optional<QuotedUnit> unit = quotedUnit(text_.substr(i));
        if (!unit) return error(i, kEscapeMessage);
        content.push_back(unit->unit);
        i += unit->length;
    }
    if (i >= text_.size()) return error(start, textKey("the quoted text does not end"));
    Token text = token(Token::Kind::kLiteral, i + 1 - start);
    text.value = std::move(content);
    return text;
}

Token PredicateLexer::variable() {
    const std::size_t length = runLength(rest().substr(1), isNamePart);
    if (length == 0 || isDigit(text_[position_ + 1]))
        return error(position_ + 1, textKey("expected a name after $"));
    Token variable = token(Token::Kind::kVariable, length + 1);
    variable.text.remove_prefix(1);
    return variable;
}

Token PredicateLexer::placeholder() {
    const std::u16string_view behind = rest().substr(1);
    const bool isPunctuation = !behind.empty() && (behind.front() == u'@' || behind.front() == u'%');
    Token placeholder =
        token(Token::Kind::kPlaceholder, 1 + (isPunctuation ? 1 : runLength(behind, isNameStart)));
    placeholder.text.remove_prefix(1);
    return placeholder;
}

Token PredicateLexer::symbol() {
    const auto* const found = std::ranges::find_if(
        kSymbols, [this](std::u16string_view symbol) { return rest().starts_with(symbol); });
    if (found == std::end(kSymbols)) return error(position_, textKey("unexpected character"));
    return token(Token::Kind::kSymbol, found->size());
}

Token PredicateLexer::token(Token::Kind kind, std::size_t length) {
    Token token{.kind = kind, .position = position_, .text = text_.substr(position_, length)};
    position_ += length;
    return token;
}

Token PredicateLexer::error(std::size_t position, const char* message) {
    return {.kind = Token::Kind::kError, .position = position, .message = message};
}

}  // namespace corvane
