// `corvane today --follow` beside another program that commits.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "CorvaneProcess.h"
#include "WidgetFixture.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

class FollowProcess : public testing::Test {
  protected:
    std::vector<std::string> arguments(const std::string& format) const {
        return CorvaneAt(widget_.environment.containerDirectory())
            .arguments({"today", "--follow", "--format", format, "--max-width", "20"});
    }

    WidgetFixture widget_;
};

TEST_F(FollowProcess, PrintsALineForEveryChangeThatShows) {
    widget_.save();
    CorvaneProcess process(arguments("line"));
    EXPECT_EQ(process.readLine(), "No more tasks for today.");
    GTask& milk = widget_.addTask(u"Milk", "2024-03-05");
    widget_.save();
    EXPECT_EQ(process.readLine(), "1 task due. First: \u2068Milk\u2069, today.");
    // Nothing of this is to be seen, so that the next line is about the change after it.
    milk.setNotes(u"Two litres");
    widget_.save();
    milk.setName(u"Bread");
    widget_.save();
    EXPECT_EQ(process.readLine(), "1 task due. First: \u2068Bread\u2069, today.");
    process.signal(SIGINT);
    process.waitForEnd();
    EXPECT_EQ(process.exitCode(), 128 + SIGINT);
    EXPECT_EQ(process.output() + process.errors(), "");
}

TEST_F(FollowProcess, WaitsForAStoreThatIsNotThereYet) {
    std::filesystem::remove(widget_.environment.containerDirectory() / kStoreFileName);
    for (const char* companion : {"Plorix.sqlite-wal", "Plorix.sqlite-shm"}) {
        std::filesystem::remove(widget_.environment.containerDirectory() / companion);
    }
    CorvaneProcess process(arguments("json"));
    const std::string first = process.readLine().value_or("");
    EXPECT_NE(first.find("\"problem\":\"there is no task store"), std::string::npos) << first;
    GSData data;
    data.launch();
    const std::string second = process.readLine().value_or("");
    EXPECT_NE(second.find("\"problem\":null"), std::string::npos) << second;
    process.signal(SIGTERM);
    process.waitForEnd();
    EXPECT_NE(process.errors().find("corvane: there is no task store"), std::string::npos);
}

TEST_F(FollowProcess, TellsOfAStoreThatBreaks) {
    widget_.save();
    CorvaneProcess process(arguments("line"));
    EXPECT_EQ(process.readLine(), "No more tasks for today.");
    const auto file = widget_.environment.containerDirectory() / kStoreFileName;
    const auto other = widget_.environment.containerDirectory() / "other";
    writeFileBytes(other, "SQLite format 3");
    std::filesystem::rename(other, file);
    const std::string problem = "The file " + file.string() + " is no task store.";
    EXPECT_EQ(process.readLine(), problem);
}

TEST_F(FollowProcess, EndsQuietlyWhenItsReaderGoesAwayWhileIdle) {
    widget_.save();
    CorvaneProcess process(arguments("waybar"));
    ASSERT_TRUE(process.readLine());
    process.closeOutput();
    process.waitForEnd();
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.errors(), "");
}

}  // namespace
}  // namespace corvane
