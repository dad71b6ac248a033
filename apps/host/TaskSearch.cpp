#include "apps/host/TaskSearch.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "apps/host/TaskSelection.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "text/CharacterSets.h"

namespace corvane {
namespace {

std::u16string_view withoutBlanksAround(std::u16string_view text) {
    const auto* const first = std::ranges::find_if_not(text, isWhiteSpace);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    while (!text.empty() && isWhiteSpace(text.back())) text.remove_suffix(1);
    return text;
}

// Signs of comparison hardly ever stand in what people call their tasks.
bool looksLikePredicate(std::u16string_view text) {
    return text.find_first_of(u"=<>") != text.npos || text.find(u"&&") != text.npos ||
           text.find(u"||") != text.npos;
}

std::u16string sentence(const PredicateError& error) {
    return stringWithFormat(localizedString("Searched as text. No predicate, at character %1$@: %2$@"),
                            {textFromUtf8(std::to_string(error.position + 1)), textFromUtf8(error.message)});
}

std::u16string sentence(const std::string& fault) {
    return stringWithFormat(localizedString("Searched as text. No predicate: %@"), {textFromUtf8(fault)});
}

}  // namespace

Predicate tasksContaining(std::u16string_view text) {
    const Value piece{std::u16string(text)};
    return fixedPredicate(u"name CONTAINS[cd] %@ OR notes CONTAINS[cd] %@", {piece, piece});
}

std::optional<TaskSearch> taskSearchFromText(std::u16string_view text) {
    const std::u16string_view words = withoutBlanksAround(text);
    if (words.empty()) return std::nullopt;
    auto parsed = predicateWithFormat(words);
    const auto* predicate = std::get_if<Predicate>(&parsed);
    const auto fault = predicate ? faultOfVariables(*predicate) : std::nullopt;
    if (predicate && !fault) {
        constexpr bool kIsPredicate = true;
        return TaskSearch{*predicate, kIsPredicate};
    }
    TaskSearch search{tasksContaining(words)};
    if (looksLikePredicate(words)) {
        search.problem = predicate ? sentence(*fault) : sentence(std::get<PredicateError>(parsed));
    }
    return search;
}

}  // namespace corvane
