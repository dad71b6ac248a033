// What the window remembers between starts: $XDG_CONFIG_HOME/corvane/today.ini, for the owner's eyes only.
#pragma once

#include <optional>

#include <QPoint>
#include <QSize>
#include <QString>

#include "apps/corvane-today/ColorScheme.h"
#include "platform/views/ExtensionContext.h"
#include "platform/views/Geometry.h"

namespace corvane {

struct WindowState {
    DisplayMode mode = DisplayMode::kExpanded;
    Size maximumSize{359, 600};  ///< of the expanded content, in points; its width is that of both modes
    ColorScheme::Choice palette = ColorScheme::Choice::kAuto;
    bool isDesktopDark = false;  ///< when the program last ran, so that the first frame has the right colours
    QString screen;              ///< the name of the screen that the window was on
    std::optional<QPoint> place;  ///< in that screen's coordinates

    bool operator==(const WindowState&) const = default;
};

/// What was kept; values that nobody can have meant are taken for the defaults.
WindowState readWindowState();

/// Where the window was on a screen, when it has ever been there.
std::optional<QPoint> placeOnScreen(const QString& screen);

/// Whether the user wants alerts: until told otherwise, yes.
bool areAlertsChosen();
void chooseAlerts(bool isEnabled);

/// The list that the last task was added to, as an object URI; empty before the first one.
QString lastUsedList();
void rememberUsedList(const QString& list);

/// Keeps the state, and the place for its screen. A file that cannot be written is left as it is.
void keepWindowState(const WindowState& state);

}  // namespace corvane
