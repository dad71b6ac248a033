#include "apps/host/Follower.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <filesystem>

#include "WidgetFixture.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

// Long enough for a loaded machine; only a failing test waits for it.
constexpr int kPatienceInMilliseconds = 60'000;

bool hasEvents(const Follower& follower, int milliseconds) {
    pollfd descriptor{follower.fileDescriptor(), POLLIN, 0};
    return poll(&descriptor, 1, milliseconds) > 0;
}

bool waitForRefresh(Follower& follower) {
    while (hasEvents(follower, kPatienceInMilliseconds)) {
        if (follower.takeEvents()) return true;
    }
    return false;
}

/// The other program: its connection to the store is its own.
class OtherProgram {
  public:
    explicit OtherProgram(WidgetFixture& widget) {
        data_.launch();
        const std::string uri = widget.context().uriRepresentation(*widget.home);
        list_ = static_cast<GList*>(data_.viewContext().objectWithUri(uri));
    }

    void addTask(std::u16string_view name, Date due) {
        GTask& task = data_.viewContext().insert<GTask>();
        task.setName(name);
        task.setList(list_);
        task.setHasDueDate(true);
        task.setHasDueTime(true);
        task.setDueDate(due);
        const auto error = data_.viewContext().save();
        ASSERT_FALSE(error) << error->message;
    }

  private:
    GSData data_;
    GList* list_ = nullptr;
};

TEST(Follower, NoticesACommitAndThenRests) {
    WidgetFixture widget;
    widget.save();
    WidgetHost host;
    Follower follower(host);
    follower.refresh();
    ASSERT_EQ(host.snapshot().dueCount, 0u);

    OtherProgram other(widget);
    for (int i = 0; i < 3; ++i) other.addTask(u"Milk", at("2024-03-05 14:00"));
    ASSERT_TRUE(waitForRefresh(follower));
    follower.refresh();
    EXPECT_EQ(host.snapshot().dueCount, 3u);
    EXPECT_FALSE(follower.takeEvents());
}

TEST(Follower, LeavesTheWidgetAloneForOtherFilesAndOwnReading) {
    WidgetFixture widget;
    widget.save();
    WidgetHost host;
    Follower follower(host);
    follower.refresh();
    writeFileBytes(widget.environment.containerDirectory() / "Plorix.sqlite-shm.bak", "x");
    writeFileBytes(widget.environment.containerDirectory() / "notes.txt", "x");
    ASSERT_TRUE(hasEvents(follower, kPatienceInMilliseconds));
    EXPECT_FALSE(follower.takeEvents());
    EXPECT_FALSE(hasEvents(follower, 0));
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
