// The widget as a picture in a file, without a display.
#pragma once

#include <optional>
#include <string>

#include "apps/corvane-today/DesktopOptions.h"

namespace corvane {

/// Sets the process up to draw without a display; before QApplication is made.
/// @param scale  pixels a point
void drawWithoutDisplay(double scale);

/// Draws the widget into the file, whole or not at all. Needs a QApplication.
/// @return why the file could not be written, or why it shows no tasks; one line
std::optional<std::string> writePng(const DesktopOptions& options);

}  // namespace corvane
