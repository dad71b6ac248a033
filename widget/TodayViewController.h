// The controller of the today widget: what it shows, how high it is, and where its taps lead.
//
// A host gives it an extension context and a text measurer, calls viewDidLoad once and widgetPerformUpdate as
// often as it likes, and draws what the outlets and the table say. Everything runs on the main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/GTask.h"
#include "platform/views/Button.h"
#include "platform/views/Label.h"
#include "platform/views/TableView.h"
#include "platform/views/TextMeasuring.h"
#include "platform/views/ViewController.h"
#include "widget/DueTasks.h"

namespace corvane {

/// What a refresh tells its host.
enum class UpdateResult { kNewData = 0, kNoData = 1, kFailed = 2 };

class TodayViewController final : public ViewController,
                                  public TableViewDataSource,
                                  public TableViewDelegate {
  public:
    static constexpr const char* kTaskCellIdentifier = "Task Cell";

    /// @param extensionContext, measuring  outlive the controller
    TodayViewController(ExtensionContext& extensionContext, const TextMeasuring& measuring);

    // Outlets
    Button addTaskButton;
    View noTasksView;  ///< holds the two labels below; a tap on it is noTasksClicked
    Label wellDoneLabel;
    Label noMoreTasksLabel;
    TableView tableView;  ///< one section
    Button showAllButton;
    Label footerLabel;

    /// How many rows fit; negative on a very short height. Set by every refresh.
    std::int64_t maxTasksInWidget() const { return maxTasksInWidget_; }
    /// All due tasks in the order shown, those without a row too. Set by every refresh, borrowed until the
    /// next one.
    const std::vector<GTask*>& todayTasks() const { return todayTasks_; }
    /// The moments that the last refresh went by.
    const DueDates& dueDates() const { return dueDates_; }

    void viewDidLoad() override;

    /// One refresh: fetches the due tasks afresh, sets all texts and the size. Without a store nothing is
    /// due.
    ///
    /// @param completionHandler  called before the return, always with kNewData
    void widgetPerformUpdate(const std::function<void(UpdateResult)>& completionHandler);

    // Table
    std::size_t numberOfRowsInSection(const TableView& table, std::size_t section) const override;
    TableViewCell& cellForRowAtIndexPath(TableView& table, IndexPath indexPath) override;
    void didSelectRowAtIndexPath(TableView& table, IndexPath indexPath) override;

    // Size
    /// Height of the content, in points.
    double calcHeight() const;
    EdgeInsets widgetMarginInsetsForProposedMarginInsets(EdgeInsets proposed) const;
    void widgetActiveDisplayModeDidChange(DisplayMode activeDisplayMode, Size withMaximumSize);

    // Hand-over to the main application
    std::u16string scheme() const;
    std::u16string addTaskUrl() const;
    std::u16string todayUrl() const;
    /// The URL that a tap on a row opens; none where there is no such task.
    std::optional<std::u16string> rowUrl(std::size_t row) const;
    void addTaskClicked();
    void noTasksClicked();
    void showAllClicked();

  private:
    double availableHeight() const;
    void showCounts();
    void updateSize();

    const TextMeasuring& measuring_;
    DueDates dueDates_;
    std::int64_t maxTasksInWidget_ = 0;
    std::vector<GTask*> todayTasks_;
};

}  // namespace corvane
