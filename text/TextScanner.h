// A cursor that reads a text from its start to its end, unit by unit, skipping nothing by itself.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corvane {

class TextScanner {
  public:
    explicit TextScanner(std::u16string_view text) : rest_(text) {}

    bool isAtEnd() const { return rest_.empty(); }

    /// Reads `expected` when it comes next.
    bool scanString(std::u16string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    /// Reads the text before the next `end`, or all of it when there is none.
    std::u16string_view scanUpToString(std::u16string_view end) { return take(rest_.find(end)); }

    /// Reads the run of units in `set`; may be empty.
    template <typename Set>
    std::u16string_view scanCharacters(Set set) {
        return take(std::find_if_not(rest_.begin(), rest_.end(), set) - rest_.begin());
    }

    /// Reads the run of units outside `set`; may be empty.
    template <typename Set>
    std::u16string_view scanUpToCharacters(Set set) {
        return take(std::find_if(rest_.begin(), rest_.end(), set) - rest_.begin());
    }

  private:
    std::u16string_view take(std::size_t count) {
        const std::u16string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::u16string_view rest_;
};

}  // namespace corvane
