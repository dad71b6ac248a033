#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "CorvaneProcess.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

using Command = std::vector<std::string>;

class ExplainProcessTest : public testing::Test {
  protected:
    ExplainProcessTest() {
        for (const char* title : {"Milk", "Bread"}) output({"task", "add", title, "--due", "today"});
        output({"task", "add", "Rent\x1B[2J", "--due", "2024-03-07"});
    }
    std::string output(const Command& command) const { return corvane_.output(command, environment()); }
    ProcessEnvironment environment() const {
        return {
            {"XDG_STATE_HOME", (directory_.path() / "state").string()}
        };
    }

    const TemporaryDirectory directory_;
    const CorvaneAt corvane_{directory_.path() / "container"};
};

TEST_F(ExplainProcessTest, TellsEveryConditionAndTheEnd) {
    EXPECT_EQ(output({"explain", "rent"}),
              "Rent␛[2J\n"
              "  not deleted: yes\n"
              "  has a title: yes, Rent␛[2J\n"
              "  the title is not empty: yes\n"
              "  the list is not deleted: yes, Tasks (On this device)\n"
              "  the list is not isolated: yes, Tasks (On this device)\n"
              "  not done: yes\n"
              "  has a due date: yes\n"
              "  due before 2024-03-06 00:00: no, due 2024-03-07\n"
              "Not shown today, because not all of this holds.\n");
    const std::string cutOff = output({"explain", "bread", "--expanded-size", "359x120"});
    EXPECT_NE(cutOff.find("\nDue today, number 2 of 2, but out of sight: the height leaves room for 1.\n"),
              std::string::npos)
        << cutOff;
}

TEST_F(ExplainProcessTest, GivesTheSameAsData) {
    const auto json = nlohmann::json::parse(output({"explain", "--json", "milk"}));
    EXPECT_EQ(json["task"]["title"], "Milk");
    EXPECT_EQ(json["shown"], true);
    EXPECT_EQ(json["position"], 1);
    EXPECT_EQ(json["dueCount"], 2);
    EXPECT_EQ(json["clauses"].size(), 8u);
    EXPECT_EQ(json["clauses"][7]["value"], "2024-03-05T00:00:00.000Z");
    const auto other = nlohmann::json::parse(output({"explain", "--json", "rent"}));
    EXPECT_EQ(other["position"], nullptr);
    EXPECT_EQ(other["clauses"][7]["fulfilled"], false);
}

TEST_F(ExplainProcessTest, RefusesWhatItCannotExplain) {
    const ProcessResult unknown = corvane_.run({"explain", "nonsense"}, environment());
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.errors, "corvane: there is no task \"nonsense\"\n");
    EXPECT_EQ(corvane_.run({"explain"}, environment()).exitCode, 2);
    EXPECT_EQ(corvane_.run({"explain", "milk", "--compact-size", "9"}, environment()).exitCode, 2);
}

}  // namespace
}  // namespace corvane
