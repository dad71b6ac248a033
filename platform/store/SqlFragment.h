// Pieces of a WHERE clause that know how deep they are: SQLite bounds the depth of an expression (1,000) and
// the stack of its parser (100 entries).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct SqlFragment {
    std::string text;
    int height = 0;           ///< of the expression's tree, at most
    int nesting = 0;          ///< entries on the parser's stack, at most
    bool isCompound = false;  ///< joined by AND or OR

    /// The text, in parentheses where another AND or OR would tear it apart.
    std::string operandText() const;
    bool fitsSqlite() const;
};

/// A condition of one level, such as a comparison.
SqlFragment simpleFragment(std::string text);

/// All operands joined by " AND " or " OR ", in groups so that a chain of any length stays shallow.
SqlFragment joinedFragments(std::vector<SqlFragment> operands, std::string_view separator);

SqlFragment negatedFragment(const SqlFragment& operand);

/// "(...) IS TRUE": never unknown.
SqlFragment testedFragment(const SqlFragment& operand, std::string_view test);

/// `before`, the fragment and `after`: the fragment in a subquery.
SqlFragment enclosedFragment(std::string_view before, const SqlFragment& inner, std::string_view after);

}  // namespace corvane
