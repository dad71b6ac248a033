#include "apps/host/WidgetHost.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "WidgetFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

// A program of its own: nothing is open yet.
struct FreshProgram {
    GSData data;
    SharedInstanceScope scope{data};
};

std::string titles(WidgetHost& host) {
    std::string text;
    for (const WidgetRow& row : host.snapshot().rows) {
        text += utf8FromText(row.title.value_or(u"(none)")) + " ";
    }
    return text;
}

void makeStore(const char16_t* title, const std::filesystem::path& copy) {
    WidgetFixture widget;
    widget.addTask(title);
    widget.save();
    std::filesystem::copy(widget.environment.containerDirectory(), copy,
                          std::filesystem::copy_options::recursive);
}

TEST(WidgetHost, ShowsTheFileThatHasTheStoresNameNow) {
    const TestEnvironment environment;
    const std::filesystem::path base = environment.containerDirectory();
    makeStore(u"Milk", base / "first");
    makeStore(u"Bread", base / "second");
    const std::filesystem::path container = base / "container";
    environment->useContainerDirectory(container);
    FreshProgram program;
    WidgetHost host;
    host.refresh();
    EXPECT_EQ(titles(host), "");

    for (const char* store : {"first", "second"}) {
        std::filesystem::remove_all(container);
        std::filesystem::copy(base / store, container, std::filesystem::copy_options::recursive);
        host.refresh();
        EXPECT_EQ(titles(host), store == std::string("first") ? "Milk " : "Bread ");
        EXPECT_EQ(host.problem(), std::nullopt);
    }
    std::filesystem::remove_all(container);
    host.refresh();
    EXPECT_EQ(host.snapshot().dueCount, 0u);
    EXPECT_TRUE(host.problem());
}

TEST(WidgetHost, HandsSizesModesAndTapsThrough) {
    WidgetFixture widget;
    widget.addTasks(4);
    widget.save();
    std::vector<std::string> opened;
    WidgetHostOptions options;
    options.displayMode = DisplayMode::kCompact;
    options.openUrl = [&opened](std::u16string_view url) { opened.push_back(utf8FromText(url)); };
    WidgetHost host(std::move(options));
    host.refresh();
    EXPECT_EQ(host.snapshot().preferredContentSize, (Size{359, 110}));
    EXPECT_EQ(host.snapshot().largestAvailableDisplayMode, DisplayMode::kExpanded);
    host.setDisplayMode(DisplayMode::kExpanded);
    EXPECT_EQ(host.snapshot().preferredContentSize, (Size{359, 215}));

    host.controller().addTaskClicked();
    EXPECT_EQ(opened, std::vector<std::string>{"velmor-plorixmax://localhost/addtask"});
}

}  // namespace
}  // namespace corvane
