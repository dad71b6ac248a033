#include "apps/host/JoinedWords.h"

#include "platform/foundation/Localization.h"

namespace corvane {

std::u16string joinedWords(std::span<const std::u16string> words) {
    std::u16string text;
    for (const std::u16string& word : words) {
        text = text.empty() ? word : stringWithFormat(localizedString("%1$@, %2$@"), {text, word});
    }
    return text;
}

}  // namespace corvane
