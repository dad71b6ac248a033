#include "platform/store/Predicate.h"

#include <cstdio>
#include <cstdlib>
#include <unordered_map>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/PredicateNode.h"
#include "platform/store/PredicateParser.h"
#include "platform/store/PredicateSubstitution.h"

namespace corvane {

namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
};

[[noreturn]] void stopAtFault(std::u16string_view format, const PredicateError& error) {
    std::fprintf(stderr, "predicate \"%s\", position %zu: %s\n", utf8FromText(format).c_str(), error.position,
                 error.message.c_str());
    std::abort();
}

// The parsed text with its placeholders unfilled, kept for the life of the process.
const Predicate& parsedFixedText(std::u16string_view format) {
    static std::unordered_map<std::u16string, Predicate, TextHash, std::equal_to<>> parsed;
    if (const auto found = parsed.find(format); found != parsed.end()) return found->second;
    std::variant<PredicateNodePointer, PredicateError> result = parsePredicate(format);
    if (const auto* error = std::get_if<PredicateError>(&result)) stopAtFault(format, *error);
    return parsed.emplace(format, Predicate(std::get<PredicateNodePointer>(std::move(result)))).first->second;
}

}  // namespace

Predicate::Predicate(std::shared_ptr<const PredicateNode> root) : root_(std::move(root)) {}

Predicate Predicate::withSubstitutionVariables(const Variables& variables) const {
    return Predicate(substituteVariables(root_, variables));
}

bool Predicate::operator==(const Predicate& other) const {
    return root_ == other.root_ || *root_ == *other.root_;
}

std::variant<Predicate, PredicateError> predicateWithFormat(std::u16string_view format,
                                                            std::span<const PredicateArgument> arguments) {
    std::variant<PredicateNodePointer, PredicateError> parsed = parsePredicate(format);
    if (auto* error = std::get_if<PredicateError>(&parsed)) return std::move(*error);
    std::variant<PredicateNodePointer, PredicateError> filled =
        substituteArguments(std::get<PredicateNodePointer>(parsed), arguments);
    if (auto* error = std::get_if<PredicateError>(&filled)) return std::move(*error);
    return Predicate(std::get<PredicateNodePointer>(std::move(filled)));
}

const Predicate& fixedPredicate(std::u16string_view format) {
    const Predicate& parsed = parsedFixedText(format);
    if (parsed.root()->hasPlaceholders)
        stopAtFault(format, {0, localizedUtf8("the arguments of its placeholders are missing")});
    return parsed;
}

Predicate fixedPredicate(std::u16string_view format, std::initializer_list<PredicateArgument> arguments) {
    const Predicate& parsed = parsedFixedText(format);
    std::variant<PredicateNodePointer, PredicateError> filled = substituteArguments(parsed.root(), arguments);
    if (const auto* error = std::get_if<PredicateError>(&filled)) stopAtFault(format, *error);
    return Predicate(std::get<PredicateNodePointer>(std::move(filled)));
}

Predicate andPredicateWithSubpredicates(const std::vector<Predicate>& predicates) {
    std::vector<PredicateNodePointer> operands;
    operands.reserve(predicates.size());
    for (const Predicate& predicate : predicates) operands.push_back(predicate.root());
    return Predicate(compoundNode(Compound::Kind::kAnd, operands));
}

}  // namespace corvane
