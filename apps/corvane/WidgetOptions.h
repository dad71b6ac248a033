// The options that say how large a widget is meant, and in which display mode.
#pragma once

#include <string>
#include <vector>

#include "apps/host/WidgetHost.h"

namespace CLI {
class App;
}

namespace corvane {

struct WidgetOptions {
    std::string mode = "expanded";
    std::string compactSize = "359x110";
    std::string expandedSize = "359x600";

    WidgetHostOptions hostOptions() const;
};

/// --mode, --compact-size and --expanded-size, checked while the command line is read.
void addWidgetOptions(CLI::App& command, WidgetOptions& options);

/// An option that takes one of a few words.
void addChoice(CLI::App& command, const std::string& name, std::string& value,
               const std::vector<std::string>& words, const std::string& description);

}  // namespace corvane
