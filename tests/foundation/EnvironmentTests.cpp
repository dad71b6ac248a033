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
    struct Row {
        const char* container;
        const char* dataHome;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"/c",    "/data",    "/c"                                        },
        {nullptr, "/data",    "/data/group.com.velmor.orin"               },
        {"",      "",         "/home/u/.local/share/group.com.velmor.orin"},
        {nullptr, "relative", "/home/u/.local/share/group.com.velmor.orin"},
    };
    for (const Row& row : kRows) {
        const ProcessVariable container("CORVANE_CONTAINER", row.container);
        const ProcessVariable dataHome("XDG_DATA_HOME", row.dataHome);
        EXPECT_EQ(Environment::defaultContainerDirectory(), row.expected);
    }
}

TEST(Environment, FindsTheDocumentsByTheUserDirectories) {
    const TemporaryDirectory configuration;
    const ProcessVariable home("HOME", "/home/u");
    const ProcessVariable directory("XDG_CONFIG_HOME", configuration.path().c_str());
    EXPECT_EQ(Environment::defaultDocumentsDirectory(), "/home/u/Documents");
    struct Row {
        const char* lines;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"XDG_DOCUMENTS_DIR=\"$HOME/Papiere\"\n",                                   "/home/u/Papiere"  },
        {"# comment\nXDG_MUSIC_DIR=\"/m\"\n  XDG_DOCUMENTS_DIR=\"/a \\\"b\\\"\"\n", "/a \"b\""         },
        {"XDG_DOCUMENTS_DIR=\"/old\"\nXDG_DOCUMENTS_DIR=\"$HOME\"",                 "/home/u"          },
        {"XDG_DOCUMENTS_DIR=\"relative\"\nXDG_DOCUMENTS_DIR=\"",                    "/home/u/Documents"},
    };
    for (const Row& row : kRows) {
        writeFileBytes(configuration.path() / "user-dirs.dirs", row.lines);
        EXPECT_EQ(Environment::defaultDocumentsDirectory(), row.expected);
    }
}

}  // namespace
}  // namespace corvane
