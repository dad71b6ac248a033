// The widget in a program of ours, where no system puts it on a screen: sizes, display mode and taps in, what
// shows out.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/GSData.h"
#include "platform/views/ExtensionContext.h"
#include "platform/views/TextMeasuring.h"
#include "widget/TodayViewController.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {

struct WidgetHostOptions {
    Size compactSize{359, 110};
    Size expandedSize{359, 600};
    DisplayMode displayMode = DisplayMode::kExpanded;
    std::function<void(std::u16string_view url)> openUrl;  ///< empty: taps lead nowhere
};

/// Shows the shared container's store and never makes one. For the main thread; one at a time.
class WidgetHost final : public ExtensionContext {
  public:
    /// @param measuring  outlives the host
    WidgetHost(WidgetHostOptions options, const TextMeasuring& measuring);
    /// For output without a window.
    explicit WidgetHost(WidgetHostOptions options = {});
    ~WidgetHost() override;

    /// For a host that draws from the outlets and the table.
    TodayViewController& controller() { return controller_; }
    const TodayViewController& controller() const { return controller_; }

    /// Opens the store; afresh where none could be opened before, or another file has taken its name. Then a
    /// new container stands in for the process's shared one, and objects of the one before are gone with the
    /// next refresh.
    void openStore();
    /// The open store; null without one.
    SqliteStore* store() const;
    /// Why there is none, as storeProblem says it; also why an open one cannot be read any more, which would
    /// look like a day without tasks.
    std::optional<std::string> problem() const;

    /// Opens the store and refreshes the widget.
    void refresh();
    /// What the last refresh shows; loads the rows on the first call.
    const WidgetSnapshot& snapshot();
    Date validUntil() const { return corvane::validUntil(controller_); }
    std::size_t overdueCount() const { return corvane::overdueCount(controller_); }

    /// Changes the display mode; the sizes follow, the tasks do not.
    void setDisplayMode(DisplayMode mode);
    /// The largest sizes of both modes from the next refresh on.
    void setMaximumSizes(Size compact, Size expanded);

    // Extension context
    Size widgetMaximumSizeForDisplayMode(DisplayMode mode) const override;
    DisplayMode widgetActiveDisplayMode() const override { return options_.displayMode; }
    DisplayMode widgetLargestAvailableDisplayMode() const override { return largestAvailableDisplayMode_; }
    void setWidgetLargestAvailableDisplayMode(DisplayMode mode) override;
    void openUrl(std::u16string_view url) override;

  private:
    /// A container of our own in the shared instance's place.
    struct ReopenedContainer {
        GSData data;
        SharedInstanceScope scope{data};
    };
    bool mustReopen() const;

    WidgetHostOptions options_;
    DisplayMode largestAvailableDisplayMode_ = DisplayMode::kCompact;
    TodayViewController controller_;
    std::optional<WidgetSnapshot> snapshot_;
    std::unique_ptr<ReopenedContainer> reopened_;
};

}  // namespace corvane
