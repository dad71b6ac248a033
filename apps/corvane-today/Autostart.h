// The session's autostart entry for this program (freedesktop.org autostart).
#pragma once

#include <optional>
#include <string>

namespace corvane {

bool isAutostarted();

/// Writes the user's own entry, whole or not at all, or removes it. Of system-wide entries there is none.
/// @return why it could not be done; one line
std::optional<std::string> setAutostarted(bool isAutostarted);

}  // namespace corvane
