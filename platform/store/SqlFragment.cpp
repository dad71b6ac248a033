#include "platform/store/SqlFragment.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

namespace corvane {

namespace {

// Below SQLite's own bounds by what the statement around a condition may need.
constexpr int kMaxHeight = 800;
constexpr int kMaxNesting = 70;

constexpr std::size_t kGroupSize = 100;

constexpr int kSimpleHeight = 4;
constexpr int kSimpleNesting = 8;
constexpr int kSubqueryNesting = 12;

SqlFragment joinedGroup(std::span<const SqlFragment> operands, std::string_view separator) {
    if (operands.size() == 1) return operands.front();
    SqlFragment joined{.text = {}, .isCompound = true};
    for (const SqlFragment& operand : operands) {
        if (!joined.text.empty()) joined.text += separator;
        joined.text += operand.operandText();
        joined.height = std::max(joined.height, operand.height);
        joined.nesting = std::max(joined.nesting, operand.nesting + (operand.isCompound ? 3 : 2));
    }
    joined.height += static_cast<int>(operands.size()) - 1;
    return joined;
}

}  // namespace

std::string SqlFragment::operandText() const { return isCompound ? "(" + text + ")" : text; }

bool SqlFragment::fitsSqlite() const { return height <= kMaxHeight && nesting <= kMaxNesting; }

SqlFragment simpleFragment(std::string text) {
    return {.text = std::move(text), .height = kSimpleHeight, .nesting = kSimpleNesting};
}

SqlFragment joinedFragments(std::vector<SqlFragment> operands, std::string_view separator) {
    while (operands.size() > 1) {
        std::vector<SqlFragment> groups;
        const std::span<const SqlFragment> all = operands;
        for (std::size_t start = 0; start < all.size(); start += kGroupSize) {
            groups.push_back(
                joinedGroup(all.subspan(start, std::min(kGroupSize, all.size() - start)), separator));
        }
        operands = std::move(groups);
    }
    return std::move(operands.front());
}

SqlFragment negatedFragment(const SqlFragment& operand) {
    return {
        .text = "NOT (" + operand.text + ")", .height = operand.height + 1, .nesting = operand.nesting + 3};
}

SqlFragment testedFragment(const SqlFragment& operand, std::string_view test) {
    return {.text = "(" + operand.text + ") " + std::string(test),
            .height = operand.height + 1,
            .nesting = operand.nesting + 2};
}

SqlFragment enclosedFragment(std::string_view before, const SqlFragment& inner, std::string_view after) {
    return {.text = std::string(before) + inner.text + std::string(after),
            .height = inner.height + kSimpleHeight,
            .nesting = inner.nesting + kSubqueryNesting};
}

}  // namespace corvane
