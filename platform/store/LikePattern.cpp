#include "platform/store/LikePattern.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include <unicode/utf16.h>

namespace corvane {

namespace {

constexpr std::int32_t kAnyCharacter = -1;
constexpr std::int32_t kAnyRun = -2;

// The code point at `position`, which moves past it.
std::int32_t nextCodePoint(std::u16string_view text, std::size_t& position) {
    UChar32 codePoint = 0;
    U16_NEXT(text, position, text.size(), codePoint);
    return codePoint;
}

}  // namespace

LikePattern::LikePattern(std::u16string_view pattern) {
    for (std::size_t i = 0; i < pattern.size();) {
        const std::int32_t codePoint = nextCodePoint(pattern, i);
        if (codePoint == u'\\' && i < pattern.size()) {
            tokens_.push_back(nextCodePoint(pattern, i));
        } else if (codePoint == u'*') {
            if (tokens_.empty() || tokens_.back() != kAnyRun) tokens_.push_back(kAnyRun);
        } else {
            tokens_.push_back(codePoint == u'?' ? kAnyCharacter : codePoint);
        }
    }
}

bool LikePattern::matches(std::u16string_view text) const {
    struct Retry {
        std::size_t token;     // behind the last run
        std::size_t position;  // where that run ends at present
    };
    std::optional<Retry> retry;
    std::size_t token = 0;
    for (std::size_t position = 0; position < text.size();) {
        if (token < tokens_.size() && tokens_[token] == kAnyRun) {
            retry = Retry{++token, position};
            continue;
        }
        std::size_t next = position;
        const std::int32_t codePoint = nextCodePoint(text, next);
        if (token < tokens_.size() && (tokens_[token] == kAnyCharacter || tokens_[token] == codePoint)) {
            ++token;
            position = next;
            continue;
        }
        if (!retry) return false;
        // Only the last run can need to grow: an earlier one already reaches its first fitting place.
        nextCodePoint(text, retry->position);
        token = retry->token;
        position = retry->position;
    }
    return std::all_of(tokens_.begin() + static_cast<std::ptrdiff_t>(token), tokens_.end(),
                       [](std::int32_t rest) { return rest == kAnyRun; });
}

}  // namespace corvane
