#include "platform/views/TextMeasuring.h"

#include <algorithm>
#include <cmath>

namespace corvane {

Size FixedAdvanceMeasuring::sizeOfText(std::u16string_view text, const Font&) const {
    return {static_cast<double>(text.size()) * advance_, lineHeight_};
}

Size FixedAdvanceMeasuring::boundingSizeOfText(std::u16string_view text, Size available, const Font&) const {
    const double unitsPerLine = std::max(1.0, std::floor(available.width / advance_));
    double widestUnits = 0;
    double lines = 0;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(u'\n', begin), text.size());
        const auto units = static_cast<double>(end - begin);
        widestUnits = std::max(widestUnits, std::min(units, unitsPerLine));
        lines += std::max(1.0, std::ceil(units / unitsPerLine));
        begin = end + 1;
    }
    return {widestUnits * advance_, std::min(lines * lineHeight_, available.height)};
}

}  // namespace corvane
