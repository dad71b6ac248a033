#include <gtest/gtest.h>

#include <filesystem>

#include "CorvaneProcess.h"
#include "support/FileBytes.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

TEST(DemoProcess, MakesAStoreOnceAndNeverOverOne) {
    const TemporaryDirectory directory;
    const std::filesystem::path demo = directory.path() / "with" / "demo";
    const CorvaneAt corvane(demo);
    const std::string said = corvane.output({"demo", demo.string()});
    EXPECT_EQ(said, "Made a demonstration. To see it: corvane --container " + demo.string() + " today\n");
    EXPECT_EQ(std::filesystem::status(demo).permissions(), std::filesystem::perms::owner_all);
    const std::string shown = corvane.output({"today"});
    EXPECT_NE(shown.find("▎ ○ !!! Pay the electricity bill\n▎   2 days ago  Customer number is"),
              std::string::npos)
        << shown;

    const std::string before = fileBytes(demo / "Plorix.sqlite");
    const ProcessResult again = corvane.run({"demo", demo.string()});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(again.errors,
              "corvane: there is a task store in " + demo.string() + " already; choose another folder\n");
    EXPECT_EQ(fileBytes(demo / "Plorix.sqlite"), before);
    EXPECT_EQ(corvane.output({"today"}), shown);
}

TEST(DemoProcess, RefusesAPlaceThatCannotBeAFolder) {
    const TemporaryDirectory directory;
    writeFileBytes(directory.path() / "file", "x");
    const ProcessResult result = runCorvane({"demo", (directory.path() / "file").string()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors,
              "corvane: the folder " + (directory.path() / "file").string() + " cannot be made\n");
    EXPECT_EQ(fileBytes(directory.path() / "file"), "x");
}

}  // namespace
}  // namespace corvane
