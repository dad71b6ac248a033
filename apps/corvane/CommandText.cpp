#include "apps/corvane/CommandText.h"

#include "apps/host/JoinedWords.h"

namespace corvane {

std::string joined(const std::vector<std::string>& words) {
    std::vector<std::u16string> texts;
    texts.reserve(words.size());
    for (const std::string& word : words) texts.push_back(textFromUtf8(word));
    return utf8FromText(joinedWords(texts));
}

}  // namespace corvane
