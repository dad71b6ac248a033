#include "platform/store/SqlCondition.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/store/ImpliedBounds.h"
#include "platform/store/QueryFunctions.h"
#include "platform/store/SqlFragment.h"
#include "platform/store/SqlOperand.h"

namespace corvane {

namespace {

// Conjuncts, parameters and joined tables beyond these are left to the judgement in memory.
constexpr std::size_t kMaxConjuncts = 500;
constexpr std::size_t kMaxParameters = 30000;
constexpr std::size_t kMaxJoins = 40;

SqlFragment exists(const SqlMembers& members, const SqlFragment& condition) {
    return enclosedFragment(
        "EXISTS (SELECT 1 FROM " + members.from + " WHERE " + members.condition + " AND (", condition, "))");
}

class ConditionWriter {
  public:
    ConditionWriter(SqlOperands& operands, SqlScope& scope) : operands_(operands), scope_(scope) {}

    SqlFragment node(const PredicateNode& node);

  private:
    SqlFragment compound(const Compound& compound);
    SqlFragment comparison(const Comparison& comparison);
    SqlFragment comparisonOf(const SqlOperand& left, const Comparison& comparison);
    SqlFragment scalar(PredicateOperator op, TextOptions options, const SqlOperand& left,
                       const SqlOperand& right);
    SqlFragment between(const SqlOperand& left, const Comparison& comparison);
    SqlFragment in(const SqlOperand& left, const Comparison& comparison);
    SqlFragment inList(const SqlOperand& left, const ListExpression& list, TextOptions options);
    SqlFragment quantified(const Comparison& comparison);

    SqlOperand operand(const Expression& expression) { return operands_.operand(scope_, expression); }

    SqlOperands& operands_;
    SqlScope& scope_;
};

SqlFragment ConditionWriter::node(const PredicateNode& node) {
    if (const auto* comparison = node.get<Comparison>()) return this->comparison(*comparison);
    if (const auto* compound = node.get<Compound>()) return this->compound(*compound);
    if (const auto* negation = node.get<Negation>()) return negatedFragment(this->node(*negation->operand));
    return simpleFragment(*node.get<bool>() ? "1" : "0");
}

SqlFragment ConditionWriter::compound(const Compound& compound) {
    std::vector<SqlFragment> operands;
    operands.reserve(compound.operands.size());
    for (const PredicateNodePointer& operand : compound.operands) operands.push_back(node(*operand));
    return joinedFragments(std::move(operands), compound.kind == Compound::Kind::kAnd ? " AND " : " OR ");
}

SqlFragment ConditionWriter::comparison(const Comparison& comparison) {
    if (comparison.quantifier != Quantifier::kPlain) return quantified(comparison);
    return comparisonOf(operand(comparison.left), comparison);
}

SqlFragment ConditionWriter::comparisonOf(const SqlOperand& left, const Comparison& comparison) {
    if (comparison.op == PredicateOperator::kBetween) return between(left, comparison);
    if (comparison.op == PredicateOperator::kIn) return in(left, comparison);
    return scalar(comparison.op, comparison.options, left, operand(comparison.right));
}

SqlFragment ConditionWriter::scalar(PredicateOperator op, TextOptions options, const SqlOperand& left,
                                    const SqlOperand& right) {
    operands_.checkFit(op, left, right);
    if (isEquality(op) && (left.isNilLiteral || right.isNilLiteral)) {
        const SqlOperand& asked = left.isNilLiteral ? right : left;
        return simpleFragment(asked.text + (op == PredicateOperator::kEqual ? " IS NULL" : " IS NOT NULL"));
    }
    const OperatorNames& names = namesOf(op);
    if (names.sql.empty() || options.any()) {
        const int bits = (options.ignoresCase ? kIgnoresCaseBit : 0) |
                         (options.ignoresDiacritics ? kIgnoresDiacriticsBit : 0);
        return simpleFragment(names.function + ("(" + left.text + ", " + right.text) + ", " +
                              std::to_string(bits) + ")");
    }
    return simpleFragment(left.text + " " + std::string(names.sql) + " " + right.text);
}

SqlFragment ConditionWriter::between(const SqlOperand& left, const Comparison& comparison) {
    const auto* bounds = comparison.right.get<ListExpression>();
    if (!bounds || bounds->elements.size() != 2) return simpleFragment("NULL");
    const SqlOperand lower = operand(bounds->elements.front());
    const SqlOperand upper = operand(bounds->elements.back());
    return joinedFragments({scalar(PredicateOperator::kGreaterOrEqual, comparison.options, left, lower),
                            scalar(PredicateOperator::kLessOrEqual, comparison.options, left, upper)},
                           " AND ");
}

SqlFragment ConditionWriter::in(const SqlOperand& left, const Comparison& comparison) {
    if (const auto* list = comparison.right.get<ListExpression>())
        return inList(left, *list, comparison.options);
    const auto* path = comparison.right.get<KeyPath>();
    if (!path) return simpleFragment("NULL");
    const SqlMembers members = operands_.members(scope_, *path);
    return exists(members, scalar(PredicateOperator::kEqual, comparison.options, left, members.value));
}

// Constants go into one IN; nil, other key paths and texts compared with options are asked one by one.
SqlFragment ConditionWriter::inList(const SqlOperand& left, const ListExpression& list, TextOptions options) {
    std::string constants;
    std::vector<SqlFragment> conditions;
    for (const Expression& element : list.elements) {
        const SqlOperand right = operand(element);
        operands_.checkFit(PredicateOperator::kEqual, left, right);
        const bool isPlain = right.isConstant && !right.isNilLiteral && !left.isNilLiteral && !options.any();
        if (!isPlain) {
            conditions.push_back(scalar(PredicateOperator::kEqual, options, left, right));
        } else {
            constants += (constants.empty() ? "" : ", ") + right.text;
        }
    }
    if (!constants.empty()) conditions.push_back(simpleFragment(left.text + " IN (" + constants + ")"));
    if (conditions.empty()) return simpleFragment("0");
    return joinedFragments(std::move(conditions), " OR ");
}

// ALL is "there is none for which it is not true", as in memory.
SqlFragment ConditionWriter::quantified(const Comparison& comparison) {
    const auto* path = comparison.left.get<KeyPath>();
    if (!path) return simpleFragment("NULL");
    const SqlMembers members = operands_.members(scope_, *path);
    const SqlFragment condition = comparisonOf(members.value, comparison);
    switch (comparison.quantifier) {
        case Quantifier::kAll:
            return negatedFragment(exists(members, testedFragment(condition, "IS NOT TRUE")));
        case Quantifier::kNone:
            return negatedFragment(exists(members, condition));
        case Quantifier::kAny:
        case Quantifier::kPlain:
            break;
    }
    return exists(members, condition);
}

// SQLite makes an inner join of a left one when a condition needs a value of the joined table, and may then
// begin with that table and go through this one once for each of its rows. It does not look into IS TRUE.
SqlFragment keptBehindItsJoins(const SqlFragment& condition) { return testedFragment(condition, "IS TRUE"); }

// The conditions that all have to hold, and those that follow from them and help to find the rows.
std::vector<PredicateNodePointer> conjunctsOf(const PredicateNodePointer& node) {
    const auto* compound = node->get<Compound>();
    std::vector<PredicateNodePointer> conjuncts = {node};
    if (compound && compound->kind == Compound::Kind::kAnd) conjuncts = compound->operands;
    for (std::size_t i = 0, count = conjuncts.size(); i < count; ++i) {
        std::ranges::copy(impliedBounds(*conjuncts[i]), std::back_inserter(conjuncts));
    }
    return conjuncts;
}

}  // namespace

bool writeCondition(const PredicateNodePointer& node, const SqlColumns& columns, SqlScope& scope,
                    SqlQuery& query, std::string& error) {
    SqlOperands operands(columns, query, error);
    std::vector<SqlFragment> conditions;
    for (const PredicateNodePointer& conjunct : conjunctsOf(node)) {
        const std::size_t parameters = query.parameters.size();
        const std::size_t joins = scope.joinedPaths().size();
        const std::size_t uses = scope.uses();
        SqlFragment condition = ConditionWriter(operands, scope).node(*conjunct);
        if (!error.empty()) return false;
        if (scope.uses() != uses) condition = keptBehindItsJoins(condition);
        if (conditions.size() < kMaxConjuncts && condition.fitsSqlite() &&
            query.parameters.size() <= kMaxParameters && scope.joinedPaths().size() <= kMaxJoins) {
            conditions.push_back(std::move(condition));
            continue;
        }
        // Without this condition the rows are a superset.
        query.isExact = false;
        query.parameters.resize(parameters);
        scope.truncate(joins);
    }
    if (conditions.empty()) conditions.push_back(simpleFragment("1"));
    const bool isSingle = conditions.size() == 1;
    const SqlFragment whole = joinedFragments(std::move(conditions), " AND ");
    query.where = isSingle ? whole.operandText() : whole.text;
    return true;
}

}  // namespace corvane
