// What the widget asks of the host that shows it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/views/Geometry.h"

namespace corvane {

enum class DisplayMode { kCompact = 0, kExpanded = 1 };

class ExtensionContext {
  public:
    virtual ~ExtensionContext() = default;

    /// The largest size that the host grants in a display mode.
    virtual Size widgetMaximumSizeForDisplayMode(DisplayMode mode) const = 0;
    virtual DisplayMode widgetActiveDisplayMode() const = 0;

    /// kExpanded: the host offers to expand the widget.
    virtual DisplayMode widgetLargestAvailableDisplayMode() const = 0;
    virtual void setWidgetLargestAvailableDisplayMode(DisplayMode mode) = 0;

    /// Hands a URL to the system; whether anybody answers it is the host's business.
    virtual void openUrl(std::u16string_view url) = 0;
};

/// A host of given sizes that keeps what the widget tells it: for output without a window.
struct FixedExtensionContext final : ExtensionContext {
    Size compactSize{359, 110};
    Size expandedSize{359, 600};
    DisplayMode activeDisplayMode = DisplayMode::kExpanded;
    DisplayMode largestAvailableDisplayMode = DisplayMode::kCompact;
    std::vector<std::u16string> openedUrls;

    Size widgetMaximumSizeForDisplayMode(DisplayMode mode) const override {
        return mode == DisplayMode::kCompact ? compactSize : expandedSize;
    }
    DisplayMode widgetActiveDisplayMode() const override { return activeDisplayMode; }
    DisplayMode widgetLargestAvailableDisplayMode() const override { return largestAvailableDisplayMode; }
    void setWidgetLargestAvailableDisplayMode(DisplayMode mode) override {
        largestAvailableDisplayMode = mode;
    }
    void openUrl(std::u16string_view url) override { openedUrls.emplace_back(url); }
};

}  // namespace corvane
