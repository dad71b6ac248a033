#include "platform/store/ValueTransformer.h"

#include <map>
#include <string>
#include <utility>

namespace corvane {

namespace {

using Registry = std::map<std::string, std::shared_ptr<const ValueTransformer>, std::less<>>;

Registry& registry() {
    static Registry transformers;
    return transformers;
}

}  // namespace

void ValueTransformer::setValueTransformer(std::string_view name,
                                           std::shared_ptr<const ValueTransformer> transformer) {
    registry().insert_or_assign(std::string(name), std::move(transformer));
}

std::shared_ptr<const ValueTransformer> ValueTransformer::forName(std::string_view name) {
    const auto found = registry().find(name);
    return found != registry().end() ? found->second : nullptr;
}

}  // namespace corvane
