#include "apps/corvane-today/WidgetSizes.h"

namespace corvane {

WidgetHostOptions hostOptionsFor(const DesktopOptions& options, const WindowState& state) {
    WidgetHostOptions result;
    result.displayMode = options.mode.value_or(state.mode);
    result.expandedSize = {options.width.value_or(state.maximumSize.width),
                           options.height.value_or(state.maximumSize.height)};
    result.compactSize.width = result.expandedSize.width;
    return result;
}

}  // namespace corvane
