#include "platform/store/StoreWatcher.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <fstream>

#include "StoreTestFixture.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

struct WatcherTest : PlatformStoreTest {};

bool isReadable(const StoreWatcher& watcher) {
    pollfd descriptor{watcher.fileDescriptor().value(), POLLIN, 0};
    return poll(&descriptor, 1, 0) == 1;
}

TEST_F(WatcherTest, NoticesACommitOfAnotherProcess) {
    StoreWatcher watcher(file);
    EXPECT_FALSE(isReadable(watcher));
    EXPECT_FALSE(watcher.readEvents());
    commitAndDie(file, "UPDATE ZGTASK SET ZNAME = 'Tea'");
    EXPECT_TRUE(isReadable(watcher));
    EXPECT_TRUE(watcher.readEvents());
    EXPECT_FALSE(isReadable(watcher));
    EXPECT_FALSE(watcher.readEvents());
}

TEST_F(WatcherTest, AReaderDoesNotFeedIt) {
    const auto store = openedStore(file);
    StoreWatcher watcher(file);
    for (int i = 0; i < 3; ++i) {
        EXPECT_GT(store->dataVersion(), 0);
        auto prepared = store->prepare("SELECT * FROM ZGTASK");
        EXPECT_EQ(std::get<0>(prepared).step(), SqliteStatement::Step::kRow);
    }
    EXPECT_FALSE(watcher.readEvents());
}

TEST_F(WatcherTest, TellsTheStoreFromItsNeighbours) {
    StoreWatcher watcher(file);
    const std::pair<const char*, bool> rows[] = {
        {"Plorix.sqlite-wal",     true },
        {"Plorix.sqlite-shm",     false},
        {"Plorix.sqlite",         true },
        {"Plorix.sqlite-old",     false},
        {"Preferences.plist",     false},
        {"Plorix.sqlit",          false},
        {"Plorix.sqlite-journal", true },
    };
    for (const auto& [name, expected] : rows) {
        writeFileBytes(directory.path() / name, "x");
        EXPECT_EQ(watcher.readEvents(), expected) << name;
    }
}

TEST_F(WatcherTest, NoticesAStoreThatGoesOrComes) {
    StoreWatcher watcher(file);
    const fs::path elsewhere = directory.path() / "elsewhere";
    fs::rename(file, elsewhere);
    EXPECT_TRUE(watcher.readEvents());
    fs::create_directory(directory.path() / "another");
    EXPECT_FALSE(watcher.readEvents());
    fs::rename(elsewhere, file);
    EXPECT_TRUE(watcher.readEvents());
}

TEST_F(WatcherTest, FollowsALinkToTheStore) {
    const fs::path link = directory.path() / "links" / "Plorix.sqlite";
    fs::create_directory(link.parent_path());
    fs::create_symlink(file, link);
    StoreWatcher watcher(link);
    commitAndDie(file, "UPDATE ZGTASK SET ZNAME = 'Tea'");
    EXPECT_TRUE(watcher.readEvents());
}

TEST_F(WatcherTest, HasNothingToSayWithoutItsDirectory) {
    EXPECT_FALSE(StoreWatcher(directory.path() / "none" / "Plorix.sqlite").fileDescriptor());
    const fs::path inner = directory.path() / "inner";
    fs::create_directory(inner);
    StoreWatcher watcher(inner / "Plorix.sqlite");
    ASSERT_TRUE(watcher.fileDescriptor());
    fs::remove(inner);
    EXPECT_TRUE(watcher.readEvents());
    EXPECT_FALSE(watcher.fileDescriptor());
    EXPECT_FALSE(watcher.readEvents());
}

TEST_F(WatcherTest, TellsADirectoryFromAnotherOfItsName) {
    const fs::path inner = directory.path() / "inner";
    fs::create_directory(inner);
    std::ofstream open(inner / "Plorix.sqlite");  // keeps the removed directory from being gone
    StoreWatcher watcher(inner / "Plorix.sqlite");
    ASSERT_TRUE(watcher.fileDescriptor());
    fs::remove_all(inner);
    EXPECT_TRUE(watcher.readEvents());
    EXPECT_FALSE(watcher.fileDescriptor());
    fs::create_directory(inner);
    EXPECT_FALSE(watcher.fileDescriptor());
}

}  // namespace
}  // namespace corvane
