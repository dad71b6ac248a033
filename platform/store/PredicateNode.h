// The tree of a predicate. Nodes are immutable and shared; their constructors bring a tree into one form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/Localization.h"
#include "platform/store/KeyPath.h"
#include "platform/store/PredicateOperators.h"
#include "platform/store/Value.h"

namespace corvane {

struct Expression;

struct ConstantExpression {
    Value value;
    bool operator==(const ConstantExpression&) const = default;
};

/// $NAME, not filled in.
struct VariableExpression {
    std::string name;
    bool operator==(const VariableExpression&) const = default;
};

/// %@, %K, %ld, ..., not filled in.
struct PlaceholderExpression {
    enum class Conversion : std::uint8_t { kObject, kKeyPath, kInteger, kReal };

    Conversion conversion = Conversion::kObject;
    std::size_t index = 0;     ///< of the argument
    std::size_t position = 0;  ///< in the text

    bool operator==(const PlaceholderExpression& other) const {
        return conversion == other.conversion && index == other.index;
    }
};

struct ListExpression {
    std::vector<Expression> elements;
    bool operator==(const ListExpression&) const;
};

struct Expression {
    std::variant<ConstantExpression, VariableExpression, PlaceholderExpression, KeyPath, ListExpression>
        content;

    template <class T>
    const T* get() const {
        return std::get_if<T>(&content);
    }
    /// The literal nil, or a variable or placeholder that was never filled in.
    bool isNilLiteral() const;
    bool operator==(const Expression&) const = default;
};

enum class Quantifier : std::uint8_t { kPlain, kAny, kAll, kNone };

struct Comparison {
    Quantifier quantifier = Quantifier::kPlain;  ///< ANY, ALL and NONE: over the members of `left`
    Expression left;
    PredicateOperator op = PredicateOperator::kEqual;
    TextOptions options;
    Expression right;
    /// For a constant text on the right of a text operator or with options.
    std::shared_ptr<const TextTest> test = nullptr;

    bool operator==(const Comparison& other) const;
};

using PredicateNodePointer = std::shared_ptr<const PredicateNode>;

struct Negation {
    PredicateNodePointer operand;
    bool operator==(const Negation& other) const;
};

/// At least two operands, none of which is a compound of the same kind.
struct Compound {
    enum class Kind : std::uint8_t { kAnd, kOr };

    Kind kind = Kind::kAnd;
    std::vector<PredicateNodePointer> operands;
    bool operator==(const Compound& other) const;
};

struct PredicateNode {
    std::variant<bool, Negation, Compound, Comparison> content;
    bool hasPlaceholders = false;  ///< that were not filled in
    bool hasVariables = false;     ///< that were not filled in

    template <class T>
    const T* get() const {
        return std::get_if<T>(&content);
    }
    bool operator==(const PredicateNode& other) const { return content == other.content; }
};

PredicateNodePointer constantNode(bool value);
/// The negation of a negation is its operand.
PredicateNodePointer negationNode(const PredicateNodePointer& operand);
/// Operands of the same kind give their own operands. One operand stands for itself; none is the constant
/// that changes nothing.
PredicateNodePointer compoundNode(Compound::Kind kind, const std::vector<PredicateNodePointer>& operands);
PredicateNodePointer comparisonNode(Comparison comparison);

/// False for MATCHES with a constant text that is no regular expression.
bool hasValidTest(const PredicateNode& node);

inline constexpr const char* kInvalidExpressionMessage = textKey("expected a regular expression");
inline constexpr const char* kBetweenMessage = textKey("expected two values between { and }");

}  // namespace corvane
