// Words and phrases one after the other, as the user's language separates them.
#pragma once

#include <span>
#include <string>

namespace corvane {

/// "Milk, today at 14:00, high priority"; empty without words.
std::u16string joinedWords(std::span<const std::u16string> words);

}  // namespace corvane
