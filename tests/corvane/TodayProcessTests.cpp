// The real program on a container of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

#include "CorvaneProcess.h"
#include "WidgetFixture.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

class TodayProcess : public testing::Test {
  protected:
    /// A saved store; its files are the test's to change.
    void makeStore() {
        GTask& milk = widget_.addTask(u"Milk", "2024-03-05 14:00");
        milk.setHasDueTime(true);
        milk.setPriority(50);
        milk.setNotes(u"Two litres");
        widget_.addTask(u"Rent", "2024-03-04");
        widget_.home->setColor(Color::rgb(1, 0.5, 0));
        widget_.save();
    }

    std::filesystem::path container() const { return widget_.environment.containerDirectory(); }
    std::filesystem::path storeFile() const { return container() / kStoreFileName; }
    CorvaneAt corvane() const { return CorvaneAt(container()); }

    WidgetFixture widget_;
};

TEST_F(TodayProcess, PrintsEveryFormat) {
    makeStore();
    EXPECT_EQ(corvane().output({"today"}),
              "▎ ○ !!! Milk\n▎   Today at 2:00\u202FPM  Two litres\n▎ ○ Rent\n▎   Yesterday\n");
    EXPECT_EQ(corvane().output({"today", "--format", "line"}),
              "2 tasks due, 1 overdue. First: \u2068Milk\u2069, today at 2:00\u202FPM, high priority.\n");
    EXPECT_EQ(corvane().output({"today", "--format", "waybar"}).substr(0, 50),
              R"({"text":"2 Milk","alt":"overdue","tooltip":"<b>2 t)");
    const std::string json = corvane().output({"today", "--json"});
    EXPECT_EQ(json.substr(0, 89),
              R"({"now":"2024-03-05T12:00:00.000Z","validUntil":"2024-03-05T14:00:00.000Z","displayMode":")");
    EXPECT_NE(
        json.find("\"title\":\"Milk\",\"notes\":\"Two litres\",\"time\":\"Today at 2:00\u202FPM\",\"bullet\":"
                  R"("Task-VUnchecked","priority":"Task-Priority3","color":"#ff8000ff","alert":false,)"),
        std::string::npos)
        << json;
    EXPECT_NE(json.find(R"("footer":null,"showAll":{"hidden":true,"title":null},"noTasks":{"hidden":true,)"
                        R"("wellDone":"Well done!","noMoreTasks":"No more tasks for today."},)"
                        R"("preferredContentSize":{"width":359,"height":101},)"
                        R"("largestAvailableDisplayMode":"expanded","overdueCount":1,"problem":null})"),
              std::string::npos)
        << json;
    EXPECT_EQ(json, corvane().output({"--json", "today", "--format", "json"}));
}

TEST_F(TodayProcess, DressesItsTextOnlyWhenAsked) {
    makeStore();
    EXPECT_EQ(corvane().output({"today"}).find('\033'), std::string::npos);
    const std::string colored = corvane().output(
        {
            "today", "--color", "always", "--links", "always"
    },
        {{"NO_COLOR", "1"}});
    EXPECT_NE(colored.find("\033[38;2;255;128;0m▎"), std::string::npos);
    EXPECT_NE(colored.find("\033]8;id=row1;velmor-plorixmax://localhost/today?taskid=x-coredata%3A%2F%2F"),
              std::string::npos);
    EXPECT_EQ(corvane().output({"today", "--max-width", "10"}).substr(0, 40), "▎ ○ !!! M…\n▎   Today…\n▎ ○ ");
}

TEST_F(TodayProcess, WritesInTheCharactersOfTheLocale) {
    widget_.addTask(u"Käse 牛乳");
    widget_.save();
    const std::string text = corvane().output(
        {
            "today"
    },
        {{"LC_ALL", "C"}});
    EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }))
        << text;
    EXPECT_EQ(text.substr(0, 6), "  o K?");
    EXPECT_NE(corvane()
                  .output(
                      {
                          "today", "--json"
    },
                      {{"LC_ALL", "C"}})
                  .find("Käse 牛乳"),
              std::string::npos);
}

TEST_F(TodayProcess, HostileTasksDoNoHarm) {
    widget_.addTask(u"\x1B[2J\u202E<b>&\"\n\x07" + std::u16string(3000, u'x'))
        .setNotes(std::u16string(10'000'000, u'\n'));
    widget_.save();
    for (const char* format : {"text", "line", "waybar", "json"}) {
        SCOPED_TRACE(format);
        const std::string output = corvane().output({"today", "--format", format});
        EXPECT_EQ(output.find('\033'), std::string::npos);
        EXPECT_EQ(output.find('\007'), std::string::npos);
        EXPECT_EQ(output.find("\u202E") == std::string::npos, format != std::string("json"));
        EXPECT_EQ(std::ranges::count(output, '\n'), format == std::string("text") ? 2 : 1);
    }
}

TEST_F(TodayProcess, LeavesEveryByteOfTheStore) {
    makeStore();
    const std::string before = fileBytes(storeFile());
    for (const char* format : {"text", "line", "waybar", "json"})
        corvane().output({"today", "--format", format});
    EXPECT_EQ(fileBytes(storeFile()), before);
}

TEST_F(TodayProcess, SaysWhyThereIsNothingToShow) {
    makeStore();
    const std::string kEmpty = "Well done!\nNo more tasks for today.\n";
    const auto missing = container() / "missing";
    const ProcessResult none = CorvaneAt(missing).run({"today"});
    EXPECT_EQ(none.output, kEmpty);
    EXPECT_EQ(none.errors, "corvane: there is no task store in " + missing.string() +
                               " yet; begin with: corvane task add \"My first task\"\n");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(missing));

    writeFileBytes(container() / "broken" / kStoreFileName, "SQLite format 3");
    const ProcessResult broken = CorvaneAt(container() / "broken").run({"today"});
    EXPECT_EQ(broken.output, kEmpty);
    EXPECT_EQ(broken.errors, "corvane: The file " + (container() / "broken" / kStoreFileName).string() +
                                 " is no task store.\n");
    EXPECT_EQ(broken.exitCode, 1);
    const CorvaneAt brokenStore(container() / "broken");
    EXPECT_EQ(brokenStore.run({"today", "--format", "line"}).output, broken.errors.substr(9));
    EXPECT_EQ(brokenStore.run({"today", "--format", "waybar", "--hide-empty"}).output,
              R"({"text":"!","alt":"error","tooltip":")" +
                  broken.errors.substr(9, broken.errors.size() - 10) + "\",\"class\":\"error\"}\n");
    EXPECT_EQ(fileBytes(container() / "broken" / kStoreFileName), "SQLite format 3");

    const ProcessResult file = CorvaneAt(storeFile()).run({"today"});
    EXPECT_EQ(file.output, kEmpty);
    EXPECT_EQ(file.exitCode, 1);
}

TEST_F(TodayProcess, AnEmptyStoreIsAFreeDay) {
    widget_.save();
    EXPECT_EQ(corvane().output({"today"}), "Well done!\nNo more tasks for today.\n");
    EXPECT_EQ(corvane().output({"today", "--hide-empty"}), "");
    EXPECT_EQ(corvane().output({"today", "--format", "line"}), "No more tasks for today.\n");
}

TEST_F(TodayProcess, WrongUsageEndsWithTwoAndOneLine) {
    for (const char* const command :
         {"", "nonsense", "today --mode huge", "today --compact-size 359", "today --compact-size -1x5",
          "today --expanded-size 359xnan", "today --max-width 0", "today --nonsense",
          "today --json --format line", "today --now yesterday", "today and more"}) {
        SCOPED_TRACE(command);
        std::istringstream text(command);
        const std::vector<std::string> arguments{std::istream_iterator<std::string>(text), {}};
        const ProcessResult result = runCorvane(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors.substr(0, 9), "corvane: ");
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1);
    }
    EXPECT_EQ(runCorvane({"nonsense"}).errors,
              "corvane: there is no command \"nonsense\"; see corvane --help\n");
    EXPECT_EQ(runCorvane({"--help"}).errors, "");
    EXPECT_EQ(runCorvane({"--version"}).output.substr(0, 8), "corvane ");
}

}  // namespace
}  // namespace corvane
