// Patterns of LIKE: "*" is any run of characters, "?" one character, "\" takes the next one as it is.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace corvane {

class LikePattern {
  public:
    explicit LikePattern(std::u16string_view pattern);

    /// Whether the whole text fits. A character is a code point; a lone surrogate counts as one.
    bool matches(std::u16string_view text) const;

  private:
    std::vector<std::int32_t> tokens_;  // code points and the two wildcards
};

}  // namespace corvane
