// The sizes and the mode that the widget is given.
#pragma once

#include "apps/corvane-today/DesktopOptions.h"
#include "apps/host/WidgetHost.h"

namespace corvane {

/// What the command line says of them.
WidgetHostOptions hostOptionsFor(const DesktopOptions& options);

}  // namespace corvane
