#include "platform/store/PredicateOperators.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <limits>

#include "platform/store/ManagedObject.h"

namespace corvane {

namespace {

constexpr OperatorNames kOperatorNames[] = {
    {PredicateOperator::kEqual,          u"==",         "=",  "CORVANE_EQUAL"           },
    {PredicateOperator::kNotEqual,       u"!=",         "<>", "CORVANE_NOT_EQUAL"       },
    {PredicateOperator::kLess,           u"<",          "<",  "CORVANE_LESS"            },
    {PredicateOperator::kLessOrEqual,    u"<=",         "<=", "CORVANE_LESS_OR_EQUAL"   },
    {PredicateOperator::kGreater,        u">",          ">",  "CORVANE_GREATER"         },
    {PredicateOperator::kGreaterOrEqual, u">=",         ">=", "CORVANE_GREATER_OR_EQUAL"},
    {PredicateOperator::kBeginsWith,     u"BEGINSWITH", "",   "CORVANE_BEGINSWITH"      },
    {PredicateOperator::kEndsWith,       u"ENDSWITH",   "",   "CORVANE_ENDSWITH"        },
    {PredicateOperator::kContains,       u"CONTAINS",   "",   "CORVANE_CONTAINS"        },
    {PredicateOperator::kLike,           u"LIKE",       "",   "CORVANE_LIKE"            },
    {PredicateOperator::kMatches,        u"MATCHES",    "",   "CORVANE_MATCHES"         },
    {PredicateOperator::kBetween,        u"BETWEEN",    "",   ""                        },
    {PredicateOperator::kIn,             u"IN",         "",   ""                        },
};

// The place of a kind of values in the order of all values.
enum class Rank : std::uint8_t { kNumber, kText, kBytes };

Rank rankOf(const ValueView& value) {
    if (std::holds_alternative<std::u16string_view>(value)) return Rank::kText;
    if (std::holds_alternative<std::span<const std::uint8_t>>(value)) return Rank::kBytes;
    return Rank::kNumber;
}

int signOf(std::weak_ordering order) { return std::is_lt(order) ? -1 : std::is_gt(order) ? 1 : 0; }

template <class Number>
int compareNumbers(Number left, Number right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

struct Number {
    bool isInteger = true;
    std::int64_t integer = 0;
    double real = 0;

    // Holds every 64-bit integer and every double exactly.
    long double exact() const { return isInteger ? static_cast<long double>(integer) : real; }
};

Number numberOf(const ValueView& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return {.integer = *integer};
    if (const auto* flag = std::get_if<bool>(&value)) return {.integer = *flag ? 1 : 0};
    if (const auto* date = std::get_if<Date>(&value)) {
        return {.isInteger = false, .real = date->time_since_epoch().count()};
    }
    if (const auto* real = std::get_if<double>(&value)) return {.isInteger = false, .real = *real};
    if (const auto* object = std::get_if<ManagedObject*>(&value)) return {.integer = rowNumberOf(**object)};
    return {};
}

int compareAsNumbers(const ValueView& left, const ValueView& right) {
    const Number a = numberOf(left);
    const Number b = numberOf(right);
    if (a.isInteger && b.isInteger) return compareNumbers(a.integer, b.integer);
    return compareNumbers(a.exact(), b.exact());
}

// UTF-16 with the surrogates moved above the rest of the plane compares as code points, and so as UTF-8.
char16_t codePointOrder(char16_t unit) {
    if (unit < 0xD800) return unit;
    return static_cast<char16_t>(unit >= 0xE000 ? unit - 0x800 : unit + 0x2000);
}

int compareTexts(std::u16string_view left, std::u16string_view right) {
    const auto [a, b] = std::ranges::mismatch(left, right);
    if (a == left.end() || b == right.end()) return compareNumbers(left.size(), right.size());
    return compareNumbers(codePointOrder(*a), codePointOrder(*b));
}

int compareBytes(std::span<const std::uint8_t> left, std::span<const std::uint8_t> right) {
    return signOf(
        std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(), right.end()));
}

Truth truthOfOrder(PredicateOperator op, int order) {
    switch (op) {
        case PredicateOperator::kEqual:
            return truthOf(order == 0);
        case PredicateOperator::kNotEqual:
            return truthOf(order != 0);
        case PredicateOperator::kLess:
            return truthOf(order < 0);
        case PredicateOperator::kLessOrEqual:
            return truthOf(order <= 0);
        case PredicateOperator::kGreater:
            return truthOf(order > 0);
        case PredicateOperator::kGreaterOrEqual:
            return truthOf(order >= 0);
        case PredicateOperator::kBeginsWith:
        case PredicateOperator::kEndsWith:
        case PredicateOperator::kContains:
        case PredicateOperator::kLike:
        case PredicateOperator::kMatches:
        case PredicateOperator::kBetween:
        case PredicateOperator::kIn:
            break;
    }
    return Truth::kFalse;
}

}  // namespace

std::span<const OperatorNames> operatorNames() { return kOperatorNames; }

const OperatorNames& namesOf(PredicateOperator op) { return kOperatorNames[static_cast<std::size_t>(op)]; }

bool isNilValue(const ValueView& value) {
    if (const auto* real = std::get_if<double>(&value)) return std::isnan(*real);
    if (const auto* date = std::get_if<Date>(&value)) return std::isnan(date->time_since_epoch().count());
    if (const auto* object = std::get_if<ManagedObject*>(&value)) return *object == nullptr;
    return std::holds_alternative<std::monostate>(value);
}

int compareValues(const ValueView& left, const ValueView& right) {
    const Rank rank = rankOf(left);
    if (rank != rankOf(right)) return compareNumbers(rank, rankOf(right));
    switch (rank) {
        case Rank::kText:
            return compareTexts(std::get<std::u16string_view>(left), std::get<std::u16string_view>(right));
        case Rank::kBytes:
            return compareBytes(std::get<std::span<const std::uint8_t>>(left),
                                std::get<std::span<const std::uint8_t>>(right));
        case Rank::kNumber:
            break;
    }
    const auto* a = std::get_if<ManagedObject*>(&left);
    const auto* b = std::get_if<ManagedObject*>(&right);
    if (a && b) return *a == *b ? 0 : signOf((*a)->objectID() <=> (*b)->objectID());
    return compareAsNumbers(left, right);
}

std::int64_t rowNumberOf(const ManagedObject& object) {
    const ManagedObjectID objectID = object.objectID();
    return objectID.isTemporary ? std::numeric_limits<std::int64_t>::min() : objectID.key;
}

TextTest::TextTest(PredicateOperator op, TextOptions options, std::u16string_view right)
    : op_(op), options_(options) {
    // A pattern keeps its case: escapes such as \D and \d differ by it.
    if (op == PredicateOperator::kMatches) options.ignoresCase = false;
    right_ = options.any() ? foldedText(right, options) : std::u16string(right);
    if (op == PredicateOperator::kLike) like_.emplace(right_);
    if (op == PredicateOperator::kMatches) {
        expression_ = RegularExpression::compile(right_, options_.ignoresCase);
        options_.ignoresCase = false;
    }
}

bool TextTest::isValid() const { return op_ != PredicateOperator::kMatches || expression_.has_value(); }

Truth TextTest::evaluate(std::u16string_view left) const {
    if (!options_.any()) return evaluateFolded(left);
    return evaluateFolded(foldedText(left, options_));
}

Truth TextTest::evaluateFolded(std::u16string_view left) const {
    switch (op_) {
        case PredicateOperator::kBeginsWith:
            return truthOf(left.starts_with(right_));
        case PredicateOperator::kEndsWith:
            return truthOf(left.ends_with(right_));
        case PredicateOperator::kContains:
            return truthOf(left.find(right_) != std::u16string_view::npos);
        case PredicateOperator::kLike:
            return truthOf(like_->matches(left));
        case PredicateOperator::kMatches: {
            const std::optional<bool> matched = expression_ ? expression_->matches(left) : std::nullopt;
            return matched ? truthOf(*matched) : Truth::kUnknown;
        }
        case PredicateOperator::kEqual:
        case PredicateOperator::kNotEqual:
        case PredicateOperator::kLess:
        case PredicateOperator::kLessOrEqual:
        case PredicateOperator::kGreater:
        case PredicateOperator::kGreaterOrEqual:
        case PredicateOperator::kBetween:
        case PredicateOperator::kIn:
            break;
    }
    return truthOfOrder(op_, compareTexts(left, right_));
}

Truth applyOperator(PredicateOperator op, TextOptions options, const ValueView& left, const ValueView& right,
                    const TextTest* prepared) {
    if (isNilValue(left) || isNilValue(right)) return Truth::kUnknown;
    const auto* leftText = std::get_if<std::u16string_view>(&left);
    const auto* rightText = std::get_if<std::u16string_view>(&right);
    if (leftText && rightText && (isTextOperator(op) || options.any())) {
        return prepared ? prepared->evaluate(*leftText)
                        : TextTest(op, options, *rightText).evaluate(*leftText);
    }
    if (isTextOperator(op)) return Truth::kFalse;
    return truthOfOrder(op, compareValues(left, right));
}

}  // namespace corvane
