#include "platform/foundation/RegularExpression.h"

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <limits>

namespace corvane {
namespace {

constexpr std::size_t kMaximumPatternLength = 32'768;  ///< code units
constexpr std::size_t kMaximumTextLength = std::numeric_limits<std::int32_t>::max() / 4;
constexpr std::int32_t kTimeLimit = 500;               ///< in the engine's steps, roughly milliseconds
constexpr std::int32_t kStackLimit = 8 * 1024 * 1024;  ///< bytes of the engine's own backtracking stack

// A view of the text without a copy; the text must outlive it.
icu::UnicodeString aliasOfText(std::u16string_view text) {
    constexpr UBool kIsTerminated = false;
    return {kIsTerminated, icu::ConstChar16Ptr(text.data()), static_cast<std::int32_t>(text.size())};
}

}  // namespace

struct RegularExpression::Engine {
    std::unique_ptr<icu::RegexPattern> pattern;
    std::unique_ptr<icu::RegexMatcher> matcher;
};

RegularExpression::RegularExpression(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}
RegularExpression::RegularExpression(RegularExpression&&) noexcept = default;
RegularExpression& RegularExpression::operator=(RegularExpression&&) noexcept = default;
RegularExpression::~RegularExpression() = default;

std::optional<RegularExpression> RegularExpression::compile(std::u16string_view pattern,
                                                            bool caseInsensitive) {
    if (pattern.size() > kMaximumPatternLength) return std::nullopt;
    auto engine = std::make_unique<Engine>();
    UErrorCode status = U_ZERO_ERROR;
    UParseError position;
    const std::uint32_t flags = caseInsensitive ? UREGEX_CASE_INSENSITIVE : 0;
    engine->pattern.reset(icu::RegexPattern::compile(aliasOfText(pattern), flags, position, status));
    if (U_FAILURE(status)) return std::nullopt;
    engine->matcher.reset(engine->pattern->matcher(status));
    engine->matcher->setTimeLimit(kTimeLimit, status);
    engine->matcher->setStackLimit(kStackLimit, status);
    if (U_FAILURE(status)) return std::nullopt;
    return RegularExpression(std::move(engine));
}

std::optional<bool> RegularExpression::matches(std::u16string_view text) const {
    if (text.size() > kMaximumTextLength) return std::nullopt;
    const icu::UnicodeString input = aliasOfText(text);
    UErrorCode status = U_ZERO_ERROR;
    engine_->matcher->reset(input);
    const bool isMatch = engine_->matcher->matches(status);
    if (U_FAILURE(status)) return std::nullopt;
    return isMatch;
}

std::optional<std::u16string> RegularExpression::replaceAll(std::u16string_view text,
                                                            std::u16string_view replacement) const {
    if (text.size() > kMaximumTextLength || replacement.size() > kMaximumTextLength) return std::nullopt;
    const icu::UnicodeString input = aliasOfText(text);
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result;
    engine_->matcher->reset(input);
    // The engine's own replaceAll stops in silence, with half a text, when a search runs out of its bounds.
    while (engine_->matcher->find(status)) {
        engine_->matcher->appendReplacement(result, aliasOfText(replacement), status);
    }
    engine_->matcher->appendTail(result);
    if (U_FAILURE(status)) return std::nullopt;
    return std::u16string(result.getBuffer(), static_cast<std::size_t>(result.length()));
}

}  // namespace corvane
