// What people type to find tasks: a piece of text, or a predicate.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/store/Predicate.h"

namespace corvane {

struct TaskSearch {
    Predicate condition;
    bool isPredicate = false;  ///< read as one, not as a piece of text
    /// Why a text that looks like a predicate is none: one sentence for people, with the position. It is then
    /// searched for as text.
    std::optional<std::u16string> problem = std::nullopt;
};

/// Tasks whose name or notes contain a text, case and diacritics aside.
Predicate tasksContaining(std::u16string_view text);

/// A text that parses as a predicate is one: "priority >= 30", "notes != nil". Any other is a piece of text.
/// @return none for a blank text
std::optional<TaskSearch> taskSearchFromText(std::u16string_view text);

}  // namespace corvane
