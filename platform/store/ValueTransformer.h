// Named value transformers: how an attribute's object becomes the bytes in the file, and back.
#pragma once

#include <any>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/foundation/PropertyList.h"

namespace corvane {

class ValueTransformer {
  public:
    virtual ~ValueTransformer() = default;

    /// Bytes of an object; none for an object of another type.
    virtual std::optional<Bytes> transformedValue(const std::any& object) const = 0;
    /// The object of stored bytes; an empty `any` when they cannot be read.
    virtual std::any reverseTransformedValue(const Bytes& data) const = 0;

    static void setValueTransformer(std::string_view name,
                                    std::shared_ptr<const ValueTransformer> transformer);
    /// Null when nobody registered the name.
    static std::shared_ptr<const ValueTransformer> forName(std::string_view name);
};

}  // namespace corvane
