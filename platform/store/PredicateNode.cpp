#include "platform/store/PredicateNode.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

template <class T>
bool contains(const Expression& expression) {
    const auto* list = expression.get<ListExpression>();
    return list ? std::ranges::any_of(list->elements, contains<T>) : expression.get<T>() != nullptr;
}

template <class T>
bool contains(const Comparison& comparison) {
    return contains<T>(comparison.left) || contains<T>(comparison.right);
}

const std::u16string* constantText(const Expression& expression) {
    const auto* constant = expression.get<ConstantExpression>();
    return constant ? std::get_if<std::u16string>(&constant->value) : nullptr;
}

PredicateNodePointer nodeOf(PredicateNode node) {
    return std::make_shared<const PredicateNode>(std::move(node));
}

}  // namespace

bool ListExpression::operator==(const ListExpression& other) const { return elements == other.elements; }

bool Expression::isNilLiteral() const {
    if (const auto* constant = get<ConstantExpression>()) return isNilValue(viewOf(constant->value));
    return get<VariableExpression>() || get<PlaceholderExpression>();
}

bool Comparison::operator==(const Comparison& other) const {
    return quantifier == other.quantifier && op == other.op && options == other.options &&
           left == other.left && right == other.right;
}

bool Negation::operator==(const Negation& other) const { return *operand == *other.operand; }

bool Compound::operator==(const Compound& other) const {
    return kind == other.kind &&
           std::ranges::equal(operands, other.operands,
                              [](const auto& a, const auto& b) { return a == b || *a == *b; });
}

PredicateNodePointer constantNode(bool value) { return nodeOf({.content = value}); }

PredicateNodePointer negationNode(const PredicateNodePointer& operand) {
    if (const auto* negation = operand->get<Negation>()) return negation->operand;
    PredicateNode node{.content = Negation{operand}};
    node.hasPlaceholders = operand->hasPlaceholders;
    node.hasVariables = operand->hasVariables;
    return nodeOf(std::move(node));
}

PredicateNodePointer compoundNode(Compound::Kind kind, const std::vector<PredicateNodePointer>& operands) {
    Compound compound{.kind = kind, .operands = {}};
    for (const PredicateNodePointer& operand : operands) {
        const auto* inner = operand->get<Compound>();
        if (inner && inner->kind == kind) {
            compound.operands.insert(compound.operands.end(), inner->operands.begin(), inner->operands.end());
        } else {
            compound.operands.push_back(operand);
        }
    }
    if (compound.operands.empty()) return constantNode(kind == Compound::Kind::kAnd);
    if (compound.operands.size() == 1) return compound.operands.front();
    PredicateNode node{.content = Compound()};
    for (const PredicateNodePointer& operand : compound.operands) {
        node.hasPlaceholders |= operand->hasPlaceholders;
        node.hasVariables |= operand->hasVariables;
    }
    node.content = std::move(compound);
    return nodeOf(std::move(node));
}

PredicateNodePointer comparisonNode(Comparison comparison) {
    const std::u16string* text = constantText(comparison.right);
    if (text && (isTextOperator(comparison.op) || comparison.options.any())) {
        comparison.test = std::make_shared<const TextTest>(comparison.op, comparison.options, *text);
    }
    PredicateNode node{.content = false};
    node.hasPlaceholders = contains<PlaceholderExpression>(comparison);
    node.hasVariables = contains<VariableExpression>(comparison);
    node.content = std::move(comparison);
    return nodeOf(std::move(node));
}

bool hasValidTest(const PredicateNode& node) {
    const auto* comparison = node.get<Comparison>();
    return !comparison || !comparison->test || comparison->test->isValid();
}

}  // namespace corvane
