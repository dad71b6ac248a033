// The commands that change a store, in processes of their own.
#include "CommandFixture.h"
#include "support/PlatformStore.h"

namespace corvane {
namespace {

class EditingProcessTest : public CommandTest {
  protected:
    std::string tree() const { return output({"task", "tree"}); }
    std::filesystem::path script(const std::string& commands) const {
        const std::filesystem::path file = directory_.path() / "editor";
        writeFileBytes(file, "#!/bin/sh\n" + commands + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }
};

TEST_F(EditingProcessTest, AFreshUsersFirstCommandsWork) {
    expectFailure({"task", "list"}, 1, "begin with: corvane task add");
    EXPECT_FALSE(std::filesystem::exists(store()));
    EXPECT_EQ(output({"task", "add", "Buy", "milk", "--due", "tomorrow"}),
              "Added \"Buy milk\" to \"Tasks\", due Tomorrow (p1)\n");
    output({"task", "add", "Skimmed", "--parent", "milk", "--priority", "50"});
    output(
        {"task", "add", "Report", "--first", "--due", "friday 14:00", "--repeat", "every week on mon, fri"});
    EXPECT_EQ(output({"task", "list"}),
              "Tasks - On this device\n"
              "   1 [ ] Report  Fri, Mar 8, 2:00\u202fPM (In 3 days)  (every week on Mon, Fri)\n"
              "   2 [ ] Buy milk  Tomorrow\n"
              "   3   [ ] Skimmed  high priority\n");
    EXPECT_EQ(output({"task", "done", "2", "report"}),
              "Done: \"Buy milk\", 1 more with it\n"
              "Done: \"Report\", next due Mon, Mar 11, 2:00\u202fPM (In 6 days)\n");
    EXPECT_EQ(output({"task", "undone", "skim"}), "Open again: \"Skimmed\", 1 more with it\n");
    EXPECT_EQ(output({"store", "check"}), "The store is sound.\n");
}

TEST_F(EditingProcessTest, ABadOptionAddsNothing) {
    expectFailure({"task", "add", "x", "--due", "soon"}, 2, "is no date");
    expectFailure({"task", "add", "x", "--repeat", "often"}, 2, "is no repeat rule");
    expectFailure({"task", "add", "x", "--alert", "15m"}, 2, "an alert needs a due date");
    expectFailure({"task", "add", " "}, 2, "must not be empty");
    expectFailure({"task", "add", "x", "--priority", "100"}, 2, "--priority");
    output({"task", "add", "y"});
    expectFailure({"task", "edit", "y", "--title", "z", "--due", "soon"}, 2, "is no date");
    EXPECT_EQ(json({"task", "list"}).size(), 1u);
    EXPECT_EQ(json({"task", "show", "p1"})["title"], "y");
}

TEST_F(EditingProcessTest, AnAmbiguousNameListsCandidatesAndDoesNothing) {
    output({"task", "add", "Café au lait"});
    output({"task", "add", "Cafe noir"});
    const ProcessResult result = run({"task", "done", "CAFE"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("p1"), std::string::npos);
    EXPECT_NE(result.errors.find("p2"), std::string::npos);
    EXPECT_EQ(json({"task", "list"}).size(), 2u);
    output({"task", "done", "cafe noir"});
    EXPECT_EQ(output({"task", "list"}), "Tasks - On this device\n   1 [ ] Café au lait\n");
    const std::string uri = json({"task", "show", "lait"})["id"];
    EXPECT_EQ(output({"task", "done", uri}), "Done: \"Café au lait\"\n");
}

TEST_F(EditingProcessTest, ANumberNeverMeansAnotherTaskLater) {
    output({"task", "add", "One"});
    output({"task", "add", "Two"});
    output({"task", "list"});
    output({"task", "add", "Zero", "--first"});
    EXPECT_EQ(output({"task", "delete", "1"}), "Deleted \"One\"\n");
    expectFailure({"task", "delete", "1"}, 1, "is gone");
    expectFailure({"task", "delete", "7"}, 1, "has no task 7");
    EXPECT_EQ(output({"task", "delete", "2"}), "Deleted \"Two\"\n");
    const auto permissions =
        std::filesystem::status(directory_.path() / "state/corvane/last-listing").permissions();
    EXPECT_EQ(permissions, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(EditingProcessTest, MovesCopiesAndDeletesTrees) {
    output({"task", "add", "A"});
    output({"task", "add", "A1", "--parent", "p1"});
    output({"task", "add", "B"});
    output({"list", "add", "Work"});
    expectFailure({"task", "move", "p1", "--after", "p2"}, 1, "below itself");
    expectFailure({"task", "move", "p1"}, 2, "say where to");
    output({"task", "move", "p1", "--after", "p3"});
    EXPECT_EQ(output({"task", "copy", "p1", "--list", "work"}),
              "Copied \"A\" to \"Work\" with 1 task below it (p4)\n");
    EXPECT_EQ(tree(),
              "Tasks - On this device\n   1 [ ] B\n   2 [ ] A\n   3   [ ] A1\n\n"
              "Work - On this device\n   4 [ ] A\n   5   [ ] A1\n");
    const std::string before = fileBytes(store());
    EXPECT_EQ(output({"task", "delete", "2", "--dry-run"}), "Would delete \"A\" and 1 task below it\n");
    EXPECT_EQ(output({"list", "delete", "work", "--dry-run"}),
              "Would delete the list \"Work\" of \"On this device\" with 2 tasks\n");
    EXPECT_EQ(fileBytes(store()), before);
    output({"task", "delete", "2", "--keep-subtasks"});
    output({"list", "delete", "work"});
    EXPECT_EQ(tree(), "Tasks - On this device\n   1 [ ] B\n   2 [ ] A1\n");
    EXPECT_EQ(output({"store", "check"}), "The store is sound.\n");
}

TEST_F(EditingProcessTest, ChangesListsAndAccounts) {
    output({"list", "add", "Home", "--color", "#1f7a8c"});
    output({"list", "add", "Work"});
    output({"list", "rename", "work", "Job"});
    output({"list", "default", "2"});
    output({"list", "isolate", "home"});
    output({"list", "order", "home", "due"});
    output({"list", "move", "job", "1"});
    EXPECT_EQ(output({"list", "list"}),
              "On this device\n 1 Job  0 open of 0, default\n 2 Home  0 open of 0, isolated, #1f7a8cff\n");
    EXPECT_EQ(json({"list", "list"})[1]["tasksOrder"], 2);
    expectFailure({"list", "color", "job", "mauve"}, 2, "is no colour");
    expectFailure({"list", "rename", "nowhere", "x"}, 1, "there is no list \"nowhere\"");

    output({"account", "add", "Office"});
    output({"account", "default", "office"});
    EXPECT_EQ(output({"account", "list"}),
              "1 On this device  on this device, 2 lists\n2 Office  on this device, 0 lists, default\n");
    EXPECT_EQ(output({"account", "delete", "1", "--dry-run"}),
              "Would delete the account \"On this device\" with 2 lists and 0 tasks\n");
    output({"account", "delete", "1"});
    EXPECT_EQ(output({"account", "delete", "office"}),
              "\"Office\" stays, as the only account, on this device with 0 lists and 0 tasks\n");
    EXPECT_EQ(output({"account", "list"}), "1 Office  on this device, 0 lists, default\n");
}

TEST_F(EditingProcessTest, EditsNotesInTheUsersEditor) {
    output({"task", "add", "Poem", "--notes", "roses"});
    const auto notes = [this] { return json({"task", "show", "poem"})["notes"]; };
    const auto edit = [this](const std::string& editor) {
        return corvane_.run({"task", "edit", "poem"}, environment(editor));
    };
    const std::string editor =
        script("stat -c %a \"$2\" > \"" + (directory_.path() / "mode").string() + "\"; echo \"$1\" >> \"$2\"")
            .string();
    EXPECT_EQ(edit(editor + " violets").output, "Changed \"Poem\"\n");
    EXPECT_EQ(notes(), "roses\nviolets");
    EXPECT_EQ(fileBytes(directory_.path() / "mode"), "600\n");
    EXPECT_EQ(edit("'" + editor + "' \"sweet words\"").exitCode, 0);
    EXPECT_EQ(notes(), "roses\nviolets\nsweet words");
    const std::string before = fileBytes(store());
    EXPECT_EQ(edit("true").output, "Nothing changed in \"Poem\"\n");
    const ProcessResult failed = edit(script("echo lost > \"$1\"; exit 1").string());
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_NE(failed.errors.find("the editor failed"), std::string::npos);
    EXPECT_EQ(edit("/nowhere/editor").exitCode, 1);
    EXPECT_EQ(fileBytes(store()), before);
    EXPECT_EQ(notes(), "roses\nviolets\nsweet words");
}

TEST_F(EditingProcessTest, RepairsWhatTheCheckFinds) {
    output({"task", "add", "One"});
    output({"task", "add", "\033[31mTwo"});
    PlainDatabase(store(), PlainDatabase::Closing::kLikeSqlite)
        .execute("UPDATE ZGTASK SET ZDISPLAYORDER = 0");
    const std::string before = fileBytes(store());
    const ProcessResult check = run({"store", "check"});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_EQ(check.output, "order: The tasks of the list \"Tasks\" are not numbered in order\n");
    EXPECT_EQ(fileBytes(store()), before);
    EXPECT_EQ(run({"store", "repair"}).exitCode, 0);
    EXPECT_EQ(output({"store", "check"}), "The store is sound.\n");
    EXPECT_EQ(output({"task", "list"}).find('\033'), std::string::npos);
}

TEST_F(EditingProcessTest, TwoProcessesAtOnceLoseNothing) {
    constexpr int kEach = 8;
    output({"task", "add", "First"});
    for (int i = 0; i < kEach; ++i) {
        CorvaneProcess one(corvane_.arguments({"task", "add", "One"}), environment());
        CorvaneProcess two(corvane_.arguments({"task", "add", "Two"}), environment());
        one.waitForEnd();
        two.waitForEnd();
        EXPECT_EQ(one.exitCode(), 0) << one.errors();
        EXPECT_EQ(two.exitCode(), 0) << two.errors();
    }
    EXPECT_EQ(json({"task", "list"}).size(), 2 * kEach + 1u);
}

}  // namespace
}  // namespace corvane
