// The value transformer of list colours: a keyed archive in the file, a Color in the program.
#pragma once

#include <any>
#include <optional>
#include <string_view>

#include "platform/store/ValueTransformer.h"

namespace corvane {

class ColorTransformer final : public ValueTransformer {
  public:
    static constexpr std::string_view kName = "ColorTransformer";

    /// Registers a fresh instance under its name.
    static void registerTransformer();

    /// Not the class of what the transformer makes: the store asks for a transformer by name alone, and other
    /// readers of the model have always been told this.
    static constexpr std::string_view transformedValueClass() { return "NSAttributedString"; }
    static constexpr bool allowsReverseTransformation() { return true; }

    /// @param object  a Color; an empty one, or one of another type, gives none
    std::optional<Bytes> transformedValue(const std::any& object) const override;
    /// A Color; empty when neither the secure nor the older reading of the archive gives one.
    std::any reverseTransformedValue(const Bytes& data) const override;
};

}  // namespace corvane
