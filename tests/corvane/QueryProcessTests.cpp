// The commands that ask, export, import and configure, in processes of their own.
#include "CommandFixture.h"
#include "platform/foundation/UserDefaults.h"
#include "support/PlatformStore.h"

namespace corvane {
namespace {

class QueryProcessTest : public CommandTest {
  protected:
    QueryProcessTest() {
        output({"task", "add", "Milk", "--due", "today", "--notes", "<b>"});
        output({"task", "add", "Skimmed", "--parent", "milk"});
        output({"task", "add", "Later", "--due", "2025-01-01", "--priority", "50"});
    }
};

TEST_F(QueryProcessTest, TasksByFilterListAndPredicate) {
    output({"account", "add", "Office"});
    output({"list", "add", "Desk", "--account", "office"});
    output({"task", "add", "Ink", "--list", "desk"});
    struct Row {
        Command options;
        const char* count;
    };
    const Row rows[] = {
        {{},                                                        "4"},
        {{"--filter", "today"},                                     "1"},
        {{"--filter", "5", "--roots"},                              "2"},
        {{"--filter", "1", "--where", "priority > 0"},              "0"},
        {{"--list", "tasks", "--where", "subTasks.@count = 1"},     "1"},
        {{"--where", "dueDate >= $TOMORROW OR name LIKE[c] 'sk*'"}, "2"},
        {{"--filter", "everything", "--list", "desk"},              "1"},
        {{"--list", "desk", "--where", "list.user = $USER"},        "1"},
        {{"--where", "list.user = $USER"},                          "3"},
        {{"--limit", "0"},                                          "0"},
    };
    for (Row row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        row.options.insert(row.options.begin(), {"tasks", "--count"});
        EXPECT_EQ(output(row.options), std::string(row.count) + "\n");
    }
    EXPECT_EQ(output({"tasks", "--order", "1"}).find("   1 [ ] Later"), 0u);
    EXPECT_EQ(output({"task", "done", "1"}).find("Done: \"Later\""), 0u) << "by the number just shown";
    EXPECT_EQ(output({"tasks", "--hide-completed", "--count"}), "3\n");
}

TEST_F(QueryProcessTest, WrongQuestionsAreWrongUsage) {
    expectFailure({"tasks", "--where", "priority >= "}, 2,
                  "--where, at character 13: expected a key path or a value");
    expectFailure({"tasks", "--where", "foo == 1"}, 2, "GTask has no property \"foo\"");
    expectFailure({"tasks", "--where", "dueDate < $FOO"}, 2, "there is no variable $FOO");
    expectFailure({"tasks", "--where", "name IN $NOW"}, 2, "expected a list of values");
    expectFailure({"tasks", "--where", "dueDate BETWEEN $TODAY"}, 2, "expected two values");
    expectFailure({"tasks", "--limit", "-1"}, 2, "Value -1 not in range");
    expectFailure({"tasks", "--limit", "99999999999999999999"}, 2, "not in range");
    expectFailure({"tasks", "--filter", "8"}, 2, "name it with --list");
    expectFailure({"export", "--tree", "--order", "1"}, 2, "--order excludes --tree");
    expectFailure({"tasks", "--filter", "yesterday"}, 2,
                  "there is no filter \"yesterday\"; corvane filters lists them");
    expectFailure({"config", "AlertDefaultHour", "24"}, 2,
                  "AlertDefaultHour takes a number from 0 to 23, not \"24\"");
    expectFailure({"config", "ShowOverdueTasksList", "maybe"}, 2,
                  "ShowOverdueTasksList takes yes or no, not \"maybe\"");
    expectFailure({"config", "Other"}, 2, "there is no setting \"Other\"; corvane config lists them");
}

TEST_F(QueryProcessTest, SettingsAreKept) {
    output({"config", "ShowOverdueTasksList", "yes"});
    output({"filters", "set", "today", "--order", "2"});
    EXPECT_EQ(output({"config", "ShowOverdueTasksList"}), "yes\n");
    EXPECT_EQ(output({"config", "TodayOverdueTasksOrder"}), "2\n");
    output({"config", "ShowOverdueTasksList", "--unset"});
    EXPECT_EQ(output({"config", "ShowOverdueTasksList"}), "no\n");
    UserDefaults defaults(directory_.path() / "container/Library/Preferences/group.com.velmor.orin.plist");
    EXPECT_TRUE(defaults.setObject("TodayOverdueTasksOrder", {std::int64_t{65'538}}));
    EXPECT_EQ(output({"config", "TodayOverdueTasksOrder"}), "2\n") << "the bits that count";
}

TEST_F(QueryProcessTest, ExportIsReadBack) {
    const std::string tree = output({"export", "--list", "tasks", "--tree"});
    EXPECT_EQ(tree, "❒ Milk\n   Tue, Mar 5\n   <b>\n ❒ Skimmed\n❒ Later\n   Wed, Jan 1, 2025\n");
    output({"list", "add", "Copy"});
    const ProcessResult taken = run({"import", "-", "--list", "copy"}, tree);
    EXPECT_EQ(taken.output, "3 tasks imported.\n") << taken.errors;
    EXPECT_EQ(output({"export", "--list", "copy", "--tree"}).find("❒ Milk\n   Tue, Mar 5\n"), 0u);
    EXPECT_EQ(output({"store", "check"}), "The store is sound.\n");
}

TEST_F(QueryProcessTest, ExportNeedsAPlaceThatTakesIt) {
    expectFailure({"export", "--output", ""}, 2, "--output takes the name of a file");
    expectFailure({"export", "--output", directory_.path().string()}, 1,
                  "could not be written: Is a directory");
}

TEST_F(QueryProcessTest, ADamagedFileIsNeitherSoundNorRepaired) {
    std::size_t page = 0;
    {
        PlainDatabase database(store(), PlainDatabase::Closing::kLikeSqlite);
        database.execute("PRAGMA wal_checkpoint(TRUNCATE)");
        page = static_cast<std::size_t>(
            database.integer("SELECT rootpage FROM sqlite_master WHERE name = 'ZGTASK'"));
    }
    constexpr std::size_t kPageSize = 4096;
    const std::string damaged = fileBytes(store()).replace((page - 1) * kPageSize, 100, 100, '\0');
    writeFileBytes(store(), damaged);
    for (const char* const command : {"check", "repair"})
        expectFailure({"store", command}, 1, "The store's database reports:");
    EXPECT_EQ(fileBytes(store()), damaged);
}

TEST_F(QueryProcessTest, ExportedTreesShowWhatBelongsTogether) {
    output({"task", "add", "Deep", "--parent", "skimmed"});
    output({"list", "order", "tasks", "priority"});
    EXPECT_EQ(output({"export", "--list", "tasks", "--tree", "--where", "name != 'Skimmed'"}),
              "❒ Milk\n   Tue, Mar 5\n   <b>\n❒ Deep\n❒ Later\n   Wed, Jan 1, 2025\n");
}

TEST_F(QueryProcessTest, FilesAreWrittenWholeOrNotAtAll) {
    const std::filesystem::path file = directory_.path() / "page.html";
    output({"export", "--page", "--title", "<Mine>", "--output", file.string()});
    const std::string page = fileBytes(file);
    EXPECT_NE(page.find("<title>&lt;Mine&gt;</title>"), std::string::npos) << page;
    EXPECT_EQ(page.find("<b>"), std::string::npos) << "notes are escaped";
    const std::string missing = (directory_.path() / "no" / "page.html").string();
    EXPECT_EQ(run({"export", "--output", missing}).exitCode, 1);
    const std::string before = fileBytes(store());
    EXPECT_EQ(run({"import", "-"}, "{\"items\": [").exitCode, 1);
    EXPECT_EQ(run({"import", "-", "--dry-run"}, "One\nTwo\n").output, "2 tasks would be imported.\n");
    EXPECT_EQ(output({"tasks", "--count"}), "3\n");
    EXPECT_EQ(fileBytes(store()), before);
}

}  // namespace
}  // namespace corvane
