#include "platform/store/PredicateSubstitution.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {

namespace {

using Conversion = PlaceholderExpression::Conversion;
using FilledExpression = std::variant<Expression, PredicateError>;

ConstantExpression constantOf(const Value& value) {
    return isNilValue(viewOf(value)) ? ConstantExpression() : ConstantExpression{value};
}

Expression expressionOf(const PredicateArgument& argument) {
    if (const auto* value = std::get_if<Value>(&argument)) return {constantOf(*value)};
    ListExpression list;
    for (const Value& element : std::get<std::vector<Value>>(argument)) {
        list.elements.push_back({constantOf(element)});
    }
    return {std::move(list)};
}

// A fault of an argument: a sentence with its number, from 1.
PredicateError argumentFault(const PlaceholderExpression& placeholder, const char* sentence) {
    return {placeholder.position,
            localizedUtf8(sentence, {textFromUtf8(std::to_string(placeholder.index + 1))})};
}

FilledExpression keyPathOf(const PlaceholderExpression& placeholder, const Value& value) {
    const auto* text = std::get_if<std::u16string>(&value);
    if (text) {
        std::variant<KeyPath, PredicateError> path = keyPathFromText(*text);
        if (auto* read = std::get_if<KeyPath>(&path)) return Expression{std::move(*read)};
    }
    return argumentFault(placeholder, textKey("argument %@ is no key path"));
}

FilledExpression integerOf(const PlaceholderExpression& placeholder, const Value& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return Expression{ConstantExpression{std::int64_t{*flag ? 1 : 0}}};
    }
    if (std::holds_alternative<std::int64_t>(value)) return Expression{ConstantExpression{value}};
    return argumentFault(placeholder, textKey("argument %@ is no integer"));
}

FilledExpression realOf(const PlaceholderExpression& placeholder, const Value& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return Expression{ConstantExpression{static_cast<double>(*integer)}};
    }
    if (std::holds_alternative<double>(value)) return Expression{constantOf(value)};
    return argumentFault(placeholder, textKey("argument %@ is no number"));
}

FilledExpression filledPlaceholder(const PlaceholderExpression& placeholder,
                                   std::span<const PredicateArgument> arguments) {
    if (placeholder.index >= arguments.size()) {
        return argumentFault(placeholder, textKey("argument %@ is missing"));
    }
    const PredicateArgument& argument = arguments[placeholder.index];
    if (placeholder.conversion == Conversion::kObject) return expressionOf(argument);
    const auto* value = std::get_if<Value>(&argument);
    if (!value) return argumentFault(placeholder, textKey("argument %@ is a list"));
    switch (placeholder.conversion) {
        case Conversion::kKeyPath:
            return keyPathOf(placeholder, *value);
        case Conversion::kInteger:
            return integerOf(placeholder, *value);
        case Conversion::kReal:
            return realOf(placeholder, *value);
        case Conversion::kObject:
            break;
    }
    return expressionOf(argument);
}

// What is wrong with a filled right side: only IN and BETWEEN take a list, and they take nothing else but a
// to-many relationship.
std::optional<std::string> faultOfRightSide(const Comparison& comparison) {
    const auto* list = comparison.right.get<ListExpression>();
    if (comparison.op == PredicateOperator::kBetween) {
        if (!list || list->elements.size() != 2) return localizedUtf8(kBetweenMessage);
        return std::nullopt;
    }
    if (comparison.op == PredicateOperator::kIn) {
        if (comparison.right.get<ConstantExpression>()) return localizedUtf8("expected a list of values");
        return std::nullopt;
    }
    if (list) return localizedUtf8("expected one value, not a list");
    return std::nullopt;
}

std::optional<std::string> faultOfVariables(const Expression& expression) {
    if (const auto* variable = expression.get<VariableExpression>()) {
        return localizedUtf8("there is no variable $%@", {textFromUtf8(variable->name)});
    }
    const auto* list = expression.get<ListExpression>();
    if (!list) return std::nullopt;
    for (const Expression& element : list->elements) {
        if (auto fault = faultOfVariables(element)) return fault;
    }
    return std::nullopt;
}

std::optional<std::string> faultOfComparison(const Comparison& comparison) {
    if (auto fault = faultOfVariables(comparison.left)) return fault;
    if (auto fault = faultOfVariables(comparison.right)) return fault;
    return faultOfRightSide(comparison);
}

// Rebuilds the parts of a tree that have something to fill in.
class Substitution {
  public:
    using Mark = bool PredicateNode::*;

    explicit Substitution(Mark isAffected) : isAffected_(isAffected) {}
    virtual ~Substitution() = default;

    PredicateNodePointer rebuilt(const PredicateNodePointer& node) {
        if (!((*node).*isAffected_) || error_) return node;
        if (const auto* negation = node->get<Negation>()) return negationNode(rebuilt(negation->operand));
        if (const auto* compound = node->get<Compound>()) return rebuiltCompound(*compound);
        return rebuiltComparison(*node->get<Comparison>());
    }

    const std::optional<PredicateError>& error() const { return error_; }

  protected:
    /// What stands in for an expression; none leaves it.
    virtual std::optional<Expression> fill(const Expression& expression) = 0;
    virtual void check(const Comparison&, const PredicateNode&) {}
    void fail(PredicateError error) {
        if (!error_) error_ = std::move(error);
    }

  private:
    PredicateNodePointer rebuiltCompound(const Compound& compound) {
        std::vector<PredicateNodePointer> operands;
        operands.reserve(compound.operands.size());
        for (const PredicateNodePointer& operand : compound.operands) operands.push_back(rebuilt(operand));
        return compoundNode(compound.kind, operands);
    }

    PredicateNodePointer rebuiltComparison(const Comparison& original) {
        Comparison comparison = original;
        comparison.left = filled(original.left);
        comparison.right = filled(original.right);
        PredicateNodePointer node = comparisonNode(std::move(comparison));
        check(original, *node);
        return node;
    }

    Expression filled(const Expression& expression) {
        if (const auto* list = expression.get<ListExpression>()) {
            ListExpression rebuiltList;
            for (const Expression& element : list->elements) rebuiltList.elements.push_back(filled(element));
            return {std::move(rebuiltList)};
        }
        std::optional<Expression> value = fill(expression);
        return value ? *std::move(value) : expression;
    }

    Mark isAffected_;
    std::optional<PredicateError> error_;
};

class ArgumentSubstitution : public Substitution {
  public:
    explicit ArgumentSubstitution(std::span<const PredicateArgument> arguments)
        : Substitution(&PredicateNode::hasPlaceholders), arguments_(arguments) {}

  private:
    std::optional<Expression> fill(const Expression& expression) override {
        const auto* placeholder = expression.get<PlaceholderExpression>();
        if (!placeholder) return std::nullopt;
        FilledExpression filled = filledPlaceholder(*placeholder, arguments_);
        if (auto* value = std::get_if<Expression>(&filled)) return std::move(*value);
        fail(std::get<PredicateError>(std::move(filled)));
        return std::nullopt;
    }

    void check(const Comparison& original, const PredicateNode& node) override {
        const auto* placeholder = original.right.get<PlaceholderExpression>();
        if (!placeholder) return;
        if (!hasValidTest(node)) fail({placeholder->position, localizedUtf8(kInvalidExpressionMessage)});
        if (std::optional<std::string> fault = faultOfRightSide(*node.get<Comparison>())) {
            fail({placeholder->position, *std::move(fault)});
        }
    }

    std::span<const PredicateArgument> arguments_;
};

class VariableSubstitution : public Substitution {
  public:
    explicit VariableSubstitution(const Predicate::Variables& variables)
        : Substitution(&PredicateNode::hasVariables), variables_(variables) {}

  private:
    std::optional<Expression> fill(const Expression& expression) override {
        const auto* variable = expression.get<VariableExpression>();
        if (!variable) return std::nullopt;
        const auto found = variables_.find(variable->name);
        if (found == variables_.end()) return std::nullopt;
        return expressionOf(found->second);
    }

    const Predicate::Variables& variables_;
};

}  // namespace

std::variant<PredicateNodePointer, PredicateError> substituteArguments(
    const PredicateNodePointer& node, std::span<const PredicateArgument> arguments) {
    ArgumentSubstitution substitution(arguments);
    PredicateNodePointer filled = substitution.rebuilt(node);
    if (substitution.error()) return *substitution.error();
    return filled;
}

PredicateNodePointer substituteVariables(const PredicateNodePointer& node,
                                         const Predicate::Variables& variables) {
    return VariableSubstitution(variables).rebuilt(node);
}

std::optional<std::string> faultAfterSubstitution(const PredicateNode& node) {
    if (const auto* comparison = node.get<Comparison>()) return faultOfComparison(*comparison);
    if (const auto* negation = node.get<Negation>()) return faultAfterSubstitution(*negation->operand);
    const auto* compound = node.get<Compound>();
    if (!compound) return std::nullopt;
    for (const PredicateNodePointer& operand : compound->operands) {
        if (auto fault = faultAfterSubstitution(*operand)) return fault;
    }
    return std::nullopt;
}

}  // namespace corvane
