// What the desktop program is told on its command line.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/host/ProgramEnvironment.h"
#include "platform/views/ExtensionContext.h"

namespace corvane {

struct PngRequest {
    std::filesystem::path file;
    double scale = 1;  ///< pixels a point
    bool isDark = false;
};

struct DesktopOptions {
    ProgramOptions environment;
    std::optional<DisplayMode> mode;  ///< none: as it was left
    std::optional<double> width;      ///< of the content, in points; none: as it was left
    std::optional<double> height;     ///< the most that the expanded content takes, in points
    bool isPrivate = false;
    bool isSilent = false;  ///< without alerts
    bool startsInBackground = false;
    std::optional<bool> autostart;  ///< sets it, and shows nothing
    std::string openUrl;            ///< empty: none was handed over
    std::optional<PngRequest> png;  ///< draws into a file, and shows nothing

    /// With another container than the user's own, or another clock, a start is no second one of the program
    /// that runs.
    bool standsAlone() const;
};

/// Reads the command line. Where it only asks for help or is wrong, it has been answered: then there are no
/// options, but an exit code.
struct CommandLineReading {
    std::optional<DesktopOptions> options;
    int exitCode = 0;
};
CommandLineReading readCommandLine(int argumentCount, const char* const* arguments);

/// Prints one line about what could not be done to standard error.
void say(const std::string& message);

}  // namespace corvane
