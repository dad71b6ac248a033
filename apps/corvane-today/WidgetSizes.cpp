#include "apps/corvane-today/WidgetSizes.h"

namespace corvane {

WidgetHostOptions hostOptionsFor(const DesktopOptions& options) {
    WidgetHostOptions result;
    result.displayMode = options.mode.value_or(result.displayMode);
    if (options.width) result.compactSize.width = result.expandedSize.width = *options.width;
    if (options.height) result.expandedSize.height = *options.height;
    return result;
}

}  // namespace corvane
