// What the shells ask for, as they ask for it.
#include <gtest/gtest.h>

#include "CorvaneProcess.h"
#include "support/FileBytes.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

using Words = std::vector<std::string>;

class CompleteProcessTest : public testing::Test {
  protected:
    std::string complete(const Words& words) const {
        Words command = {"complete", "--"};
        command.insert(command.end(), words.begin(), words.end());
        return corvane_.output(command);
    }
    void addTask(const std::string& title) const { corvane_.output({"task", "add", "--", title}); }

    const TemporaryDirectory directory_;
    const std::filesystem::path container_ = directory_.path() / "container";
    const CorvaneAt corvane_{container_};
};

TEST_F(CompleteProcessTest, CommandsAndOptionsComeFromTheParser) {
    struct Row {
        const char* what;
        Words words;
        const char* candidates;
    };
    const Row rows[] = {
        {"a command of a noun",         {"task", "und"},                    "undone\tOpen completed tasks again\n"},
        {"behind a global option",
         {"--json", "exp"},
         "export\tWrite tasks as text or HTML\nexplain\tTell why a task is shown today, or is not\n"              },
        {"an option of the command",    {"task", "list", "--all"},          "--all\tCompleted tasks too\n"        },
        {"an option of all commands",   {"task", "list", "--js"},           "--json\tPrint data as JSON\n"        },
        {"one of a few words",          {"today", "--mode", "c"},           "compact\t\n"                         },
        {"the same behind a sign",      {"today", "--mode=c"},              "--mode=compact\t\n"                  },
        {"the second argument",         {"list", "order", "x", "d"},        "due\t\n"                             },
        {"files are the shell's",       {"export", "--output", ""},         ":files\n"                            },
        {"a free text",                 {"task", "add", ""},                ""                                    },
        {"more than the command takes", {"demo", "x", ""},                  ""                                    },
        {"no options behind the end",   {"task", "add", "--", "--"},        ""                                    },
        {"what is for shells only",     {"compl"},                          ""                                    },
        {"an unknown option",           {"today", "--nothing", "--mode=e"}, "--mode=expanded\t\n"                 },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(complete(row.words), row.candidates);
    }
}

TEST_F(CompleteProcessTest, NamesThatCannotBeTypedGiveWayToIdentifiers) {
    for (const char* title : {"Twins", "twins", "42", "-n", "p7", "Two\nlines", "Ärger"}) addTask(title);
    EXPECT_EQ(complete({"task", "done", "twi"}), "p1\tTwins, Tasks\np2\ttwins, Tasks\n");
    EXPECT_EQ(complete({"task", "done", "4"}), "p3\t42, Tasks\n");
    EXPECT_EQ(complete({"task", "done", "--", "-"}), "p4\t-n, Tasks\n");
    EXPECT_EQ(complete({"task", "done", "p7"}), "p5\tp7, Tasks\n");
    EXPECT_EQ(complete({"task", "done", "two"}), "Two lines\tTasks\n");
    EXPECT_EQ(complete({"task", "done", "a"}), "Ärger\tTasks\n");
}

TEST_F(CompleteProcessTest, OfferedTasksAreThoseThatTheCommandIsFor) {
    addTask("Milk");
    addTask("Mint");
    corvane_.output({"task", "done", "mint"});
    EXPECT_EQ(complete({"task", "done", "mi"}), "Milk\tTasks\n");
    EXPECT_EQ(complete({"task", "undone", "mi"}), "Mint\tTasks\n");
    EXPECT_EQ(complete({"task", "move", "--after", "mi"}), "Milk\tTasks\n");
}

TEST_F(CompleteProcessTest, ReadsTheContainerOfTheLineAndMakesNone) {
    addTask("Milk");
    const std::string before = fileBytes(container_ / "Plorix.sqlite");
    const CorvaneAt elsewhere(directory_.path() / "none");
    const ProcessEnvironment environment = {
        {"FOLDER", directory_.path().string()}
    };
    const auto milk = [&](const Words& option) {
        Words command = {"complete", "--"};
        command.insert(command.end(), option.begin(), option.end());
        command.insert(command.end(), {"task", "show", "m"});
        return elsewhere.output(command, environment);
    };
    EXPECT_EQ(milk({}), "");
    EXPECT_EQ(milk({"--container", container_.string()}), "Milk\tTasks\n");
    EXPECT_EQ(milk({"--container", "$FOLDER/container"}), "Milk\tTasks\n");
    EXPECT_EQ(milk({"--container", "$NO_FOLDER/container"}), "");
    EXPECT_EQ(milk({"--container=" + container_.string()}), "Milk\tTasks\n");
    EXPECT_FALSE(std::filesystem::exists(directory_.path() / "none"));
    EXPECT_EQ(fileBytes(container_ / "Plorix.sqlite"), before);
}

}  // namespace
}  // namespace corvane
