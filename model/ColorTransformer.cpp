#include "model/ColorTransformer.h"

#include <memory>

#include "platform/foundation/KeyedArchive.h"

namespace corvane {

void ColorTransformer::registerTransformer() {
    setValueTransformer(kName, std::make_shared<const ColorTransformer>());
}

std::optional<Bytes> ColorTransformer::transformedValue(const std::any& object) const {
    const auto* color = std::any_cast<Color>(&object);
    if (!color) return std::nullopt;
    return archivedDataWithColor(*color);
}

std::any ColorTransformer::reverseTransformedValue(const Bytes& data) const {
    std::optional<Color> color = unarchivedColorSecurely(data);
    if (!color) color = unarchivedColorLegacy(data);
    return color ? std::any(*color) : std::any();
}

}  // namespace corvane
