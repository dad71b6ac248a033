#include "platform/foundation/UserDefaults.h"

#include <gtest/gtest.h>

#include "PropertyListSamples.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

class UserDefaultsTest : public testing::Test {
  protected:
    UserDefaultsTest() : file_(directory_.path() / "Library/Preferences/suite.plist") {}

    void writeXml(std::string_view dictionary) const { writeFileBytes(file_, xmlPropertyList(dictionary)); }

    std::size_t filesBesideIt() const {
        const std::filesystem::directory_iterator entries(file_.parent_path());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries))) - 1;
    }

    TemporaryDirectory directory_;
    std::filesystem::path file_;
};

TEST_F(UserDefaultsTest, ReadsValuesAsThePlatformDoes) {
    constexpr std::tuple<const char*, std::int64_t, bool> kRows[] = {
        {"<true/>",                                1,                        true },
        {"<integer>12</integer>",                  12,                       true },
        {"<integer>-3</integer>",                  -3,                       true },
        {"<real>2.9</real>",                       2,                        true },
        {"<string>YES</string>",                   0,                        true },
        {"<string> -01</string>",                  -1,                       true },
        {"<string>NO</string>",                    0,                        false},
        {"<string></string>",                      0,                        false},
        {"<real>1e300</real>",                     9223372036854775807,      true },
        {"<string>-99999999999999999999</string>", -9223372036854775807 - 1, true },
        {"<data>AQ==</data>",                      0,                        false},
        {"<array><integer>1</integer></array>",    0,                        false},
    };
    for (const auto& [value, integer, boolean] : kRows) {
        SCOPED_TRACE(value);
        writeXml("<dict><key>key</key>" + std::string(value) + "</dict>");
        const UserDefaults defaults(file_);
        EXPECT_EQ(defaults.integerForKey("key"), integer);
        EXPECT_EQ(defaults.boolForKey("key"), boolean);
    }
}

TEST_F(UserDefaultsTest, IsEmptyWithoutAFile) {
    const UserDefaults defaults(file_);
    EXPECT_EQ(defaults.integerForKey("AlertDefaultHour"), 0);
    EXPECT_FALSE(std::filesystem::exists(file_.parent_path()));
    UserDefaults nowhere{std::filesystem::path()};
    EXPECT_FALSE(nowhere.setObject("ListsOrder", {true}));
    EXPECT_EQ(nowhere.objectForKey("ListsOrder"), std::nullopt);
}

TEST_F(UserDefaultsTest, WritesForTheOwnerAlone) {
    UserDefaults defaults(file_);
    ASSERT_TRUE(defaults.setObject("AlertDefaultHour", {std::int64_t{9}}));
    EXPECT_EQ(defaults.integerForKey("AlertDefaultHour"), 9);
    EXPECT_EQ(UserDefaults(file_).integerForKey("AlertDefaultHour"), 9);
    EXPECT_EQ(std::filesystem::status(file_).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(std::filesystem::status(file_.parent_path()).permissions(), std::filesystem::perms(0700));
    ASSERT_TRUE(defaults.removeObjectForKey("AlertDefaultHour"));
    EXPECT_EQ(defaults.objectForKey("AlertDefaultHour"), std::nullopt);
    EXPECT_EQ(filesBesideIt(), 0);
}

TEST_F(UserDefaultsTest, SeesWhatOthersWrite) {
    UserDefaults ours(file_), theirs(file_);
    ASSERT_TRUE(theirs.setObject("ListsOrder", {std::int64_t{1}}));
    EXPECT_EQ(ours.integerForKey("ListsOrder"), 1);
    ASSERT_TRUE(theirs.setObject("ListsOrder", {std::int64_t{2}}));
    EXPECT_EQ(ours.integerForKey("ListsOrder"), 2);
    for (char digit = '3'; digit <= '9'; ++digit) {  // in place: same file, same size, same tick of the clock
        writeXml(std::string("<dict><key>ListsOrder</key><integer>") + digit + "</integer></dict>");
        EXPECT_EQ(ours.integerForKey("ListsOrder"), digit - '0');
    }
    std::filesystem::remove(file_);
    EXPECT_EQ(ours.integerForKey("ListsOrder"), 0);
}

TEST_F(UserDefaultsTest, KeepsTheKeysOfOthersExactly) {
    writeXml(
        "<dict><key>theirs</key><array><date>4001-01-01T00:00:00Z</date><integer>18446744073709551615</"
        "integer>"
        "<real>0.1</real><dict/></array></dict>");
    UserDefaults defaults(file_);
    const auto before = defaults.objectForKey("theirs");
    ASSERT_TRUE(before);
    ASSERT_TRUE(defaults.setObject("ours", {true}));
    ASSERT_TRUE(defaults.removeObjectForKey("ours"));
    EXPECT_EQ(defaults.objectForKey("theirs"), before);
    // In the binary form, 16 bytes with leading zeros are an integer without a sign.
    const std::string unsignedInteger =
        std::string(1, '\x14') + std::string(8, '\0') + std::string(8, '\xFF');
    EXPECT_NE(fileBytes(file_).find(unsignedInteger), std::string::npos);
}

TEST_F(UserDefaultsTest, NeverWritesOverWhatItCannotRead) {
    for (const std::string& broken :
         {std::string("bplist00 broken"), std::string("hello"), xmlPropertyList("<array/>")}) {
        writeFileBytes(file_, broken);
        UserDefaults defaults(file_);
        EXPECT_EQ(defaults.objectForKey("ListsOrder"), std::nullopt);
        EXPECT_FALSE(defaults.setObject("ListsOrder", {true}));
        EXPECT_FALSE(defaults.removeObjectForKey("ListsOrder"));
        EXPECT_EQ(fileBytes(file_), broken);
    }
    std::filesystem::resize_file(file_, 17 * 1024 * 1024);
    EXPECT_FALSE(UserDefaults(file_).setObject("ListsOrder", {true}));
    EXPECT_EQ(std::filesystem::file_size(file_), 17 * 1024 * 1024);
    std::filesystem::remove(file_);
    std::filesystem::create_directory(file_);
    EXPECT_FALSE(UserDefaults(file_).setObject("ListsOrder", {true}));
}

TEST_F(UserDefaultsTest, KeepsTheOldFileWhenTheDiskIsFull) {
    UserDefaults defaults(file_);
    ASSERT_TRUE(defaults.setObject("ListsOrder", {std::int64_t{2}}));
    const std::string before = fileBytes(file_);
    {
        const FileSizeLimit limit(10);
        EXPECT_FALSE(defaults.setObject("ListsOrder", {std::int64_t{1}}));
    }
    EXPECT_EQ(fileBytes(file_), before);
    EXPECT_EQ(defaults.integerForKey("ListsOrder"), 2);
    EXPECT_EQ(filesBesideIt(), 0);
}

TEST_F(UserDefaultsTest, ReplacesTheFileBehindALink) {
    const std::filesystem::path real = directory_.path() / "dotfiles/suite.plist";
    writeFileBytes(real, xmlPropertyList("<dict/>"));
    std::filesystem::create_directories(file_.parent_path());
    std::filesystem::create_symlink(real, file_);
    ASSERT_TRUE(UserDefaults(file_).setObject("ListsOrder", {true}));
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_TRUE(UserDefaults(real).boolForKey("ListsOrder"));
}

}  // namespace
}  // namespace corvane
