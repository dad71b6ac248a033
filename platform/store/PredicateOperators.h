// What each operator of the predicate language means: the one definition that evaluation in memory and the
// functions registered with SQLite share.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/RegularExpression.h"
#include "platform/store/LikePattern.h"
#include "platform/store/TextFolding.h"
#include "platform/store/Value.h"

namespace corvane {

/// Three-valued logic as in SQL. AND is the least of its truths, OR the greatest.
enum class Truth : std::uint8_t { kFalse, kUnknown, kTrue };

constexpr Truth truthOf(bool value) { return value ? Truth::kTrue : Truth::kFalse; }
constexpr Truth negated(Truth truth) {
    if (truth == Truth::kUnknown) return truth;
    return truthOf(truth == Truth::kFalse);
}

enum class PredicateOperator : std::uint8_t {
    kEqual,
    kNotEqual,
    kLess,
    kLessOrEqual,
    kGreater,
    kGreaterOrEqual,
    kBeginsWith,
    kEndsWith,
    kContains,
    kLike,
    kMatches,
    kBetween,  ///< between the two elements of a list, both included
    kIn,       ///< equal to an element of a list, or a member of a to-many relationship
};

struct OperatorNames {
    PredicateOperator op;
    std::u16string_view text;   ///< in the predicate language
    std::string_view sql;       ///< SQL's own operator; empty where there is none
    const char* function = "";  ///< registered for operators of two single values
};

/// Every operator, in the order of the enumeration.
std::span<const OperatorNames> operatorNames();
const OperatorNames& namesOf(PredicateOperator op);

constexpr bool isEquality(PredicateOperator op) {
    return op == PredicateOperator::kEqual || op == PredicateOperator::kNotEqual;
}
/// BEGINSWITH, ENDSWITH, CONTAINS, LIKE and MATCHES: false for values that are no texts.
constexpr bool isTextOperator(PredicateOperator op) {
    return op >= PredicateOperator::kBeginsWith && op <= PredicateOperator::kMatches;
}

/// Whether a value counts as nil: none at all, a NaN (SQLite stores it as NULL) or a null object.
bool isNilValue(const ValueView& value);

/// Negative, zero or positive, in SQLite's order without affinities: numbers (booleans, dates and row numbers
/// of objects included), then texts by code points, then bytes. Neither value is nil.
int compareValues(const ValueView& left, const ValueView& right);

/// A row number for SQL: an object that was never saved has one that no row has.
std::int64_t rowNumberOf(const ManagedObject& object);

/// A text operator, or a comparison of texts that ignores case or diacritics, with its right side prepared
/// for many left sides.
class TextTest {
  public:
    TextTest(PredicateOperator op, TextOptions options, std::u16string_view right);

    /// False for MATCHES with a right side that is no regular expression; it then never matches.
    bool isValid() const;
    Truth evaluate(std::u16string_view left) const;

  private:
    Truth evaluateFolded(std::u16string_view left) const;

    PredicateOperator op_;
    TextOptions options_;
    std::u16string right_;
    std::optional<LikePattern> like_;
    std::optional<RegularExpression> expression_;
};

/// `left op right` for an operator of two single values; unknown when one of them is nil.
/// @param prepared  the test for `right` where it was made before
Truth applyOperator(PredicateOperator op, TextOptions options, const ValueView& left, const ValueView& right,
                    const TextTest* prepared = nullptr);

}  // namespace corvane
