#include "platform/store/ImpliedBounds.h"

#include <algorithm>
#include <optional>
#include <span>
#include <variant>

namespace corvane {
namespace {

// A way to keep an attribute on one side of a date.
struct Side {
    PredicateOperator open;
    PredicateOperator closed;
    bool isUpper;
};
constexpr Side kSides[] = {
    {PredicateOperator::kLess,    PredicateOperator::kLessOrEqual,    true },
    {PredicateOperator::kGreater, PredicateOperator::kGreaterOrEqual, false}
};

const Date* dateOf(const Comparison& comparison, const Side& side) {
    const bool isBound = comparison.op == side.open || comparison.op == side.closed;
    if (!isBound || comparison.quantifier != Quantifier::kPlain) return nullptr;
    const auto* constant = comparison.right.get<ConstantExpression>();
    return constant ? std::get_if<Date>(&constant->value) : nullptr;
}

const KeyPath* ownAttribute(const Comparison& comparison) {
    const auto* path = comparison.left.get<KeyPath>();
    return path && path->steps.size() == 1 && !path->isCount ? path : nullptr;
}

std::span<const PredicateNodePointer> conjunctsOf(const PredicateNodePointer& node) {
    const auto* compound = node->get<Compound>();
    if (compound && compound->kind == Compound::Kind::kAnd) return compound->operands;
    return {&node, 1};
}

// The bound of one alternative. Of several the first: any of them holds.
std::optional<Date> boundOf(const PredicateNodePointer& alternative, const KeyPath& path, const Side& side) {
    for (const PredicateNodePointer& conjunct : conjunctsOf(alternative)) {
        const auto* comparison = conjunct->get<Comparison>();
        if (!comparison) continue;
        const KeyPath* bounded = ownAttribute(*comparison);
        const Date* date = dateOf(*comparison, side);
        if (bounded && date && *bounded == path) return *date;
    }
    return std::nullopt;
}

// None unless every alternative has a bound.
std::optional<Date> weakestBound(std::span<const PredicateNodePointer> alternatives, const KeyPath& path,
                                 const Side& side) {
    std::optional<Date> weakest;
    for (const PredicateNodePointer& alternative : alternatives) {
        const std::optional<Date> bound = boundOf(alternative, path, side);
        if (!bound) return std::nullopt;
        const bool isWeaker = !weakest || (side.isUpper ? *bound > *weakest : *bound < *weakest);
        if (isWeaker) weakest = bound;
    }
    return weakest;
}

}  // namespace

std::vector<PredicateNodePointer> impliedBounds(const PredicateNode& node) {
    std::vector<PredicateNodePointer> bounds;
    const auto* compound = node.get<Compound>();
    if (!compound || compound->kind != Compound::Kind::kOr) return bounds;
    for (const PredicateNodePointer& conjunct : conjunctsOf(compound->operands.front())) {
        const auto* comparison = conjunct->get<Comparison>();
        const KeyPath* path = comparison ? ownAttribute(*comparison) : nullptr;
        if (!path) continue;
        for (const Side& side : kSides) {
            if (!dateOf(*comparison, side)) continue;
            const std::optional<Date> weakest = weakestBound(compound->operands, *path, side);
            if (!weakest) continue;
            Comparison bound;
            bound.left = comparison->left;
            bound.op = side.closed;
            bound.right = {ConstantExpression{Value(*weakest)}};
            bounds.push_back(comparisonNode(std::move(bound)));
        }
    }
    return bounds;
}

}  // namespace corvane
