// Predicates: questions about an object, written in the store's query language.
//
// Comparisons (=, ==, !=, <>, <, <=, =<, >, >=, =>, BETWEEN, IN, BEGINSWITH, ENDSWITH, CONTAINS, LIKE,
// MATCHES, with [c], [d] and [cd]), AND OR NOT and && || !, ANY ALL NONE and @count over to-many paths, nil
// NULL YES NO TRUE FALSE, numbers, quoted texts, TRUEPREDICATE FALSEPREDICATE, %@ %ld %d %K and $NAME.
//
// A comparison with nil on either side is neither true nor false, as in SQL; "== nil" and "!= nil" test for
// nil. A condition that is neither selects nothing, negated or not. ANY, ALL and NONE are always one or the
// other: a member for which the comparison is neither counts as one that does not fulfil it.
//
// Booleans, integers, reals and dates (seconds since 2001) compare as numbers, texts by code points. Numbers
// come before texts and texts before bytes, as in SQLite. Memory and SQL answer alike.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/store/Value.h"

namespace corvane {

struct PredicateError {
    std::size_t position = 0;  ///< code units from the start of the text
    std::string message;       ///< one line for people, without the position
};

struct PredicateNode;

/// What fills a placeholder or a $NAME: a value, or a list for the right side of IN and BETWEEN. A null
/// object and a NaN count as nil.
using PredicateArgument = std::variant<Value, std::vector<Value>>;

class Predicate {
  public:
    /// Values of $NAMEs, by name without "$".
    using Variables = std::map<std::string, PredicateArgument, std::less<>>;

    explicit Predicate(std::shared_ptr<const PredicateNode> root);

    /// The predicate with its variables filled in. Names that it does not use are ignored, names without a
    /// value stay.
    Predicate withSubstitutionVariables(const Variables& variables) const;

    /// Whether the object fulfils it, by its values in memory. A variable that was never filled in is nil.
    bool evaluate(const ManagedObject& object) const;

    /// The predicate as text, in one spelling: parsing it gives an equal predicate, unless it holds objects,
    /// bytes or infinite numbers, which have no literals.
    std::u16string predicateFormat() const;

    /// Same structure and same values.
    bool operator==(const Predicate& other) const;

    const std::shared_ptr<const PredicateNode>& root() const { return root_; }

  private:
    std::shared_ptr<const PredicateNode> root_;
};

/// Parses a predicate text. Placeholders take the arguments in order; %K takes a text as a key path.
/// Nesting is bounded; a text that is nested deeper is an error.
[[nodiscard]] std::variant<Predicate, PredicateError> predicateWithFormat(
    std::u16string_view format, std::span<const PredicateArgument> arguments = {});

/// The predicate of a fixed text of the program, parsed on first use and kept. A text that does not parse, or
/// that has placeholders, is a fault of the program and stops it.
const Predicate& fixedPredicate(std::u16string_view format);

/// As above for a text with placeholders; arguments that do not fit them stop the program.
Predicate fixedPredicate(std::u16string_view format, std::initializer_list<PredicateArgument> arguments);

/// Fulfilled when all are; without any, always.
Predicate andPredicateWithSubpredicates(const std::vector<Predicate>& predicates);

}  // namespace corvane
