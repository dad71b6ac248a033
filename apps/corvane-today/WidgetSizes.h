// The sizes and the mode that the widget is given.
#pragma once

#include "apps/corvane-today/DesktopOptions.h"
#include "apps/corvane-today/WindowSettings.h"
#include "apps/host/WidgetHost.h"

namespace corvane {

/// What the command line says of them, else what the window remembers.
WidgetHostOptions hostOptionsFor(const DesktopOptions& options, const WindowState& state = {});

}  // namespace corvane
