// Keyed archives of a colour, in the form that the store keeps them.
//
// A binary property list with "$version", "$archiver", "$top" and "$objects"; references are UIDs and are
// followed by number. XML archives (UIDs as {CF$UID: n}) are read as well.
#pragma once

#include <optional>
#include <span>

#include "platform/foundation/PropertyList.h"
#include "platform/views/Color.h"

namespace corvane {

/// The archive of a colour: single-precision and "-Double" components and the desktop readers' text form.
Bytes archivedDataWithColor(const Color& color);

/// Reads an archive whose root object's class is the colour class.
std::optional<Color> unarchivedColorSecurely(std::span<const std::uint8_t> data);

/// Reads an archive without looking at the root's declared class, as older archives need it.
std::optional<Color> unarchivedColorLegacy(std::span<const std::uint8_t> data);

}  // namespace corvane
