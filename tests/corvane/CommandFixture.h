// Commands over one container, each in a process of its own, with a state folder of the test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "CorvaneProcess.h"
#include "model/GSData.h"
#include "support/FileBytes.h"
#include "support/TestEnvironment.h"

namespace corvane {

class CommandTest : public testing::Test {
  protected:
    using Json = nlohmann::json;
    using Command = std::vector<std::string>;

    ProcessEnvironment environment(const std::string& editor = "") const {
        const std::string state = (directory_.path() / "state").string();
        return {
            {"XDG_STATE_HOME", state },
            {"EDITOR",         editor},
            {"VISUAL",         ""    }
        };
    }
    ProcessResult run(const Command& command, const std::string& input = {}) const {
        return corvane_.run(command, environment(), input);
    }
    /// Of a command that must succeed without a word on standard error.
    std::string output(const Command& command) const { return corvane_.output(command, environment()); }
    Json json(Command command) const {
        command.insert(command.begin(), "--json");
        return Json::parse(output(command));
    }
    /// One line says why, and nothing else is said.
    void expectFailure(const Command& command, int exitCode, const std::string& reason) const {
        const ProcessResult result = run(command);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors.find("corvane: "), 0u);
        EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    }
    std::filesystem::path store() const { return directory_.path() / "container" / kStoreFileName; }

    const TemporaryDirectory directory_;
    const CorvaneAt corvane_{directory_.path() / "container"};
};

}  // namespace corvane
