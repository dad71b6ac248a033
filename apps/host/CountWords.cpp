#include "apps/host/CountWords.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr std::int32_t kMost = 9'999;

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

}  // namespace

std::vector<std::int32_t> countsToTry(std::u16string_view text) {
    std::vector<std::int32_t> counts = {1, 2};
    const auto* unit = text.begin();
    while ((unit = std::find_if(unit, text.end(), isDigit)) != text.end()) {
        std::int32_t number = 0;
        for (; unit != text.end() && isDigit(*unit); ++unit) {
            number = std::min(number * 10 + (*unit - u'0'), kMost + 1);
        }
        if (number > 0 && number <= kMost) counts.push_back(number);
    }
    return counts;
}

}  // namespace corvane
