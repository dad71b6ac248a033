#include "apps/host/Follower.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <filesystem>

#include "WidgetFixture.h"
#include "apps/host/DemoContent.h"

namespace corvane {
namespace {

// Long enough for a loaded machine; only a failing test waits for it.
constexpr int kPatienceInMilliseconds = 60'000;

bool waitForRefresh(Follower& follower) {
    pollfd descriptor{follower.fileDescriptor(), POLLIN, 0};
    while (poll(&descriptor, 1, kPatienceInMilliseconds) > 0) {
        if (follower.takeEvents()) return true;
    }
    return false;
}

TEST(Follower, FindsAStoreThatComesLater) {
    const TestEnvironment environment;
    const std::filesystem::path container = environment.containerDirectory() / "later";
    environment->useContainerDirectory(container, Environment::MissingDirectory::kLeave);
    GSData data;
    const SharedInstanceScope scope(data);
    WidgetHost host;
    Follower follower(host);
    follower.refresh();
    ASSERT_TRUE(host.problem());

    // The directory could not be watched; from the next refresh on it is.
    std::filesystem::create_directory(container);
    follower.refresh();
    ASSERT_TRUE(host.problem());
    GSData other;
    other.launch();
    ASSERT_TRUE(waitForRefresh(follower));
    follower.refresh();
    EXPECT_EQ(host.problem(), std::nullopt);
    EXPECT_FALSE(follower.takeEvents()) << "its own reading is no event";
}

TEST(Follower, FollowsAContainerThatIsRemovedAndMadeAgain) {
    WidgetFixture widget;
    widget.save();
    const std::filesystem::path container = widget.environment.containerDirectory();
    WidgetHost host;
    Follower follower(host);
    follower.refresh();
    ASSERT_EQ(host.problem(), std::nullopt);

    std::filesystem::remove_all(container);
    std::filesystem::create_directory(container);
    GSData other;
    other.launch();
    ASSERT_TRUE(waitForRefresh(follower));
    follower.refresh();
    ASSERT_EQ(host.problem(), std::nullopt);
    ASSERT_EQ(host.snapshot().dueCount, 0u);

    addDemonstration(other.viewContext());
    ASSERT_EQ(other.viewContext().save(), std::nullopt);
    ASSERT_TRUE(waitForRefresh(follower));
    follower.refresh();
    EXPECT_GT(host.snapshot().dueCount, 0u);
}

TEST(Follower, WakesWhenTheNextDueTimeHasCome) {
    WidgetFixture widget;
    const TimeInterval ahead = at("2024-03-05 12:00") - ReferenceClock::now();
    widget.environment->now = [ahead] { return ReferenceClock::now() + ahead; };
    GTask& task = widget.addTask(u"Milk");
    task.setHasDueTime(true);
    task.setDueDate(now() + TimeInterval(0.2));
    widget.save();
    WidgetHost host;
    Follower follower(host);
    follower.refresh();
    ASSERT_EQ(host.overdueCount(), 0u);
    ASSERT_TRUE(waitForRefresh(follower));
    follower.refresh();
    EXPECT_EQ(host.overdueCount(), 1u);
}

}  // namespace
}  // namespace corvane
