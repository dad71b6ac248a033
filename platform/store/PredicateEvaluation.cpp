// Predicates over objects in memory.
#include <algorithm>

#include "platform/store/KeyPath.h"
#include "platform/store/ManagedObject.h"
#include "platform/store/Predicate.h"
#include "platform/store/PredicateNode.h"

namespace corvane {

namespace {

// One side of a comparison for the object at hand.
struct Side {
    ValueView value;
    bool isNilLiteral = false;
};

Side sideOf(const Expression& expression, const ManagedObject& object) {
    if (const auto* path = expression.get<KeyPath>()) return {valueOfKeyPath(object, *path)};
    if (const auto* constant = expression.get<ConstantExpression>()) {
        return {viewOf(constant->value), expression.isNilLiteral()};
    }
    return {{}, expression.isNilLiteral()};
}

Truth scalarTruth(PredicateOperator op, TextOptions options, const Side& left, const Side& right,
                  const TextTest* test = nullptr) {
    if (isEquality(op) && (left.isNilLiteral || right.isNilLiteral)) {
        const bool isNil = isNilValue(left.value) && isNilValue(right.value);
        return truthOf(isNil == (op == PredicateOperator::kEqual));
    }
    return applyOperator(op, options, left.value, right.value, test);
}

Truth betweenTruth(const Comparison& comparison, const Side& left, const ManagedObject& object) {
    const auto* bounds = comparison.right.get<ListExpression>();
    if (!bounds || bounds->elements.size() != 2) return Truth::kUnknown;
    const Side lower = sideOf(bounds->elements.front(), object);
    const Side upper = sideOf(bounds->elements.back(), object);
    return std::min(scalarTruth(PredicateOperator::kGreaterOrEqual, comparison.options, left, lower),
                    scalarTruth(PredicateOperator::kLessOrEqual, comparison.options, left, upper));
}

Truth listTruth(const Comparison& comparison, const Side& left, const ListExpression& list,
                const ManagedObject& object) {
    Truth truth = Truth::kFalse;
    for (const Expression& element : list.elements) {
        const Side right = sideOf(element, object);
        truth = std::max(truth, scalarTruth(PredicateOperator::kEqual, comparison.options, left, right));
        if (truth == Truth::kTrue) break;
    }
    return truth;
}

Truth inTruth(const Comparison& comparison, const Side& left, const ManagedObject& object) {
    if (const auto* list = comparison.right.get<ListExpression>()) {
        return listTruth(comparison, left, *list, object);
    }
    const auto* path = comparison.right.get<KeyPath>();
    if (!path) return Truth::kUnknown;
    return truthOf(anyValueOfKeyPath(object, *path, [&](const ValueView& member) {
        return scalarTruth(PredicateOperator::kEqual, comparison.options, left, {member}) == Truth::kTrue;
    }));
}

// The comparison with one value on its left.
Truth truthForLeft(const Comparison& comparison, const Side& left, const ManagedObject& object) {
    if (comparison.op == PredicateOperator::kBetween) return betweenTruth(comparison, left, object);
    if (comparison.op == PredicateOperator::kIn) return inTruth(comparison, left, object);
    return scalarTruth(comparison.op, comparison.options, left, sideOf(comparison.right, object),
                       comparison.test.get());
}

// ALL is "there is none for which it is not true": true without members.
Truth quantifiedTruth(const Comparison& comparison, const ManagedObject& object) {
    const auto* path = comparison.left.get<KeyPath>();
    if (!path) return Truth::kUnknown;
    const bool looksForFailure = comparison.quantifier == Quantifier::kAll;
    const bool found = anyValueOfKeyPath(object, *path, [&](const ValueView& member) {
        return (truthForLeft(comparison, {member}, object) == Truth::kTrue) != looksForFailure;
    });
    return truthOf(found == (comparison.quantifier == Quantifier::kAny));
}

Truth truthOfNode(const PredicateNode& node, const ManagedObject& object);

Truth compoundTruth(const Compound& compound, const ManagedObject& object) {
    const bool isAnd = compound.kind == Compound::Kind::kAnd;
    const Truth decided = isAnd ? Truth::kFalse : Truth::kTrue;
    Truth truth = negated(decided);
    for (const PredicateNodePointer& operand : compound.operands) {
        const Truth operandTruth = truthOfNode(*operand, object);
        if (operandTruth == decided) return decided;
        if (operandTruth == Truth::kUnknown) truth = operandTruth;
    }
    return truth;
}

Truth truthOfNode(const PredicateNode& node, const ManagedObject& object) {
    if (const auto* comparison = node.get<Comparison>()) {
        if (comparison->quantifier != Quantifier::kPlain) return quantifiedTruth(*comparison, object);
        return truthForLeft(*comparison, sideOf(comparison->left, object), object);
    }
    if (const auto* compound = node.get<Compound>()) return compoundTruth(*compound, object);
    if (const auto* negation = node.get<Negation>()) return negated(truthOfNode(*negation->operand, object));
    return truthOf(*node.get<bool>());
}

}  // namespace

bool Predicate::evaluate(const ManagedObject& object) const {
    return truthOfNode(*root_, object) == Truth::kTrue;
}

}  // namespace corvane
