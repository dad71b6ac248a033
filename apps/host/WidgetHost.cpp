#include "apps/host/WidgetHost.h"

#include <utility>
#include <variant>

#include "apps/host/ProgramStore.h"
#include "platform/store/SqliteStore.h"
#include "widget/DueTasks.h"

namespace corvane {
namespace {

const FixedAdvanceMeasuring& measuringWithoutFonts() {
    static const FixedAdvanceMeasuring measuring;
    return measuring;
}

}  // namespace

WidgetHost::WidgetHost(WidgetHostOptions options, const TextMeasuring& measuring)
    : options_(std::move(options)), controller_(*this, measuring) {
    controller_.viewDidLoad();
}

WidgetHost::WidgetHost(WidgetHostOptions options) : WidgetHost(std::move(options), measuringWithoutFonts()) {}

WidgetHost::~WidgetHost() = default;

void WidgetHost::openStore() {
    if (mustReopen()) {
        reopened_.reset();
        reopened_ = std::make_unique<ReopenedContainer>();
    }
    launchForShowing(GSData::sharedInstance());
}

// A file that lies there again under the old name is another one, and its rows are not the ones we know.
bool WidgetHost::mustReopen() const {
    if (!GSData::sharedInstance().launched()) return false;
    return !store() || store()->isReplaced();
}

SqliteStore* WidgetHost::store() const {
    return GSData::sharedInstance().persistentStoreCoordinator().store();
}

std::optional<std::string> WidgetHost::problem() const {
    GSData& data = GSData::sharedInstance();
    if (auto problem = storeProblem(data)) return problem;
    if (!controller_.todayTasks().empty() || !data.launched()) return std::nullopt;
    constexpr std::int64_t kNoRows = 0;
    const auto count =
        data.viewContext().countForFetch(requestForDueTasks(DueDates::ofThisMoment(), kNoRows));
    const StoreError* error = std::get_if<StoreError>(&count);
    return error ? std::optional(error->message) : std::nullopt;
}

void WidgetHost::refresh() {
    openStore();
    controller_.widgetPerformUpdate({});
    snapshot_.reset();
}

const WidgetSnapshot& WidgetHost::snapshot() {
    if (!snapshot_) snapshot_ = widgetSnapshot(controller_);
    return *snapshot_;
}

void WidgetHost::setDisplayMode(DisplayMode mode) {
    options_.displayMode = mode;
    controller_.widgetActiveDisplayModeDidChange(mode, widgetMaximumSizeForDisplayMode(mode));
    snapshot_.reset();
}

void WidgetHost::setMaximumSizes(Size compact, Size expanded) {
    options_.compactSize = compact;
    options_.expandedSize = expanded;
}

Size WidgetHost::widgetMaximumSizeForDisplayMode(DisplayMode mode) const {
    return mode == DisplayMode::kCompact ? options_.compactSize : options_.expandedSize;
}

void WidgetHost::setWidgetLargestAvailableDisplayMode(DisplayMode mode) {
    largestAvailableDisplayMode_ = mode;
}

void WidgetHost::openUrl(std::u16string_view url) {
    if (options_.openUrl) options_.openUrl(url);
}

}  // namespace corvane
