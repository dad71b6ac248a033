#include "platform/foundation/Environment.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/FileBytes.h"
#include "support/ProcessVariable.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

mode_t permissions(const std::filesystem::path& file) {
    struct stat attributes = {};
    return stat(file.c_str(), &attributes) == 0 ? attributes.st_mode & 0777 : 0;
}

TEST(Environment, MakesItsContainerForTheOwnerAlone) {
    const TestEnvironment environment;
    const std::filesystem::path container = environment.containerDirectory() / "new" / "container";
    EXPECT_TRUE(environment->useContainerDirectory(container));
    EXPECT_EQ(environment->containerDirectory, container);
    EXPECT_EQ(permissions(container), mode_t{0700});
    EXPECT_TRUE(environment->userDefaults->setObject("ListsOrder", {std::int64_t{2}}));
    EXPECT_TRUE(std::filesystem::exists(container / "Library/Preferences/group.com.velmor.orin.plist"));
}

TEST(Environment, HasNoContainerWhereNoneCanBeMade) {
    const TestEnvironment environment;
    const std::filesystem::path file = environment.containerDirectory() / "file";
    writeFileBytes(file, "");
    for (const std::filesystem::path& container : {file, file / "below"}) {
        EXPECT_FALSE(environment->useContainerDirectory(container));
        EXPECT_EQ(environment->containerDirectory, std::nullopt);
        EXPECT_FALSE(environment->userDefaults->setObject("ListsOrder", {true}));
    }
}

TEST(Environment, FindsTheContainerByTheBaseDirectories) {
    const ProcessVariable home("HOME", "/home/u");
    constexpr std::tuple<const char*, const char*, const char*> kRows[] = {
        {"/c",    "/data",    "/c"                                        },
        {nullptr, "/data",    "/data/group.com.velmor.orin"               },
        {"",      "",         "/home/u/.local/share/group.com.velmor.orin"},
        {nullptr, "relative", "/home/u/.local/share/group.com.velmor.orin"},
    };
    for (const auto& [container, dataHome, expected] : kRows) {
        const ProcessVariable containerVariable("CORVANE_CONTAINER", container);
        const ProcessVariable dataHomeVariable("XDG_DATA_HOME", dataHome);
        EXPECT_EQ(Environment::defaultContainerDirectory(), expected);
    }
}

TEST(Environment, FindsTheDocumentsByTheUserDirectories) {
    const TemporaryDirectory configuration;
    const ProcessVariable home("HOME", "/home/u");
    const ProcessVariable directory("XDG_CONFIG_HOME", configuration.path().c_str());
    EXPECT_EQ(Environment::defaultDocumentsDirectory(), "/home/u/Documents");
    constexpr std::pair<const char*, const char*> kRows[] = {
        {"XDG_DOCUMENTS_DIR=\"$HOME/Papiere\"\n",                                   "/home/u/Papiere"  },
        {"# comment\nXDG_MUSIC_DIR=\"/m\"\n  XDG_DOCUMENTS_DIR=\"/a \\\"b\\\"\"\n", "/a \"b\""         },
        {"XDG_DOCUMENTS_DIR=\"/old\"\nXDG_DOCUMENTS_DIR=\"$HOME\"",                 "/home/u"          },
        {"XDG_DOCUMENTS_DIR=\"relative\"\nXDG_DOCUMENTS_DIR=\"",                    "/home/u/Documents"},
    };
    for (const auto& [lines, expected] : kRows) {
        writeFileBytes(configuration.path() / "user-dirs.dirs", lines);
        EXPECT_EQ(Environment::defaultDocumentsDirectory(), expected);
    }
}

}  // namespace
}  // namespace corvane
