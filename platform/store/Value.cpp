#include "platform/store/Value.h"

#include <type_traits>

namespace corvane {

ValueView viewOf(const Value& value) {
    return std::visit([](const auto& held) -> ValueView { return held; }, value);
}

}  // namespace corvane
