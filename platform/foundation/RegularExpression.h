// ICU regular expressions, bounded in time and stack.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class RegularExpression {
  public:
    /// None when the pattern is no regular expression.
    static std::optional<RegularExpression> compile(std::u16string_view pattern,
                                                    bool caseInsensitive = false);

    RegularExpression(RegularExpression&&) noexcept;
    RegularExpression& operator=(RegularExpression&&) noexcept;
    ~RegularExpression();

    /// Whether the whole text matches; none when the engine ran out of its bounds.
    std::optional<bool> matches(std::u16string_view text) const;

    /// The text with every match replaced ("$1" is the first group); none when the engine ran out of its
    /// bounds.
    std::optional<std::u16string> replaceAll(std::u16string_view text, std::u16string_view replacement) const;

  private:
    struct Engine;
    explicit RegularExpression(std::unique_ptr<Engine> engine);
    std::unique_ptr<Engine> engine_;
};

}  // namespace corvane
