// The container: launch, auto-save, merging, moving of the store.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "ModelFixture.h"
#include "model/Accounts.h"
#include "platform/store/ManagedObjectContext.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

class CountingData : public GSData {
  public:
    void installInitialData() override { ++installations; }
    int installations = 0;
};

class StoreContainerTest : public testing::Test {
  protected:
    fs::path store() { return environment_.containerDirectory() / "Plorix.sqlite"; }
    MainQueue& queue() { return *environment_->mainQueue; }

    const TestEnvironment environment_;
};

TEST_F(StoreContainerTest, OpensItsStoreOnce) {
    CountingData data;
    int scheduled = 0;
    queue().onBlockAdded = [&] { ++scheduled; };
    data.launch();
    data.launch();
    EXPECT_TRUE(data.launched());
    EXPECT_EQ(data.loadError(), std::nullopt);
    EXPECT_TRUE(fs::exists(store()));
    EXPECT_EQ(data.installations, 1);
    EXPECT_EQ(scheduled, 1) << "the first save of a fresh store";
    GUser& account = data.viewContext().insert<GUser>();
    account.setAccountType(kUnlistedAccountType);
    scheduled = 0;
    data.viewContext().processPendingChanges();
    EXPECT_EQ(scheduled, 1) << "one observer of changes";
    queue().drain();
    CountingData again;
    again.launch();
    EXPECT_EQ(again.installations, 1) << "only a listed account makes a store used";
    account.setAccountType(kLocalAccountType);
    ASSERT_EQ(data.viewContext().save(), std::nullopt);
    CountingData third;
    third.launch();
    EXPECT_EQ(third.installations, 0);
}

TEST_F(StoreContainerTest, SavesHalfASecondAfterAChange) {
    GSData data;
    data.launch();
    queue().advance(TimeInterval(0));
    GUser& account = makeAccount(data.viewContext());
    data.viewContext().processPendingChanges();
    queue().advance(TimeInterval(0.4));
    account.setName(u"Later");
    data.viewContext().processPendingChanges();
    EXPECT_TRUE(data.viewContext().hasChanges());
    queue().advance(TimeInterval(0.1));
    EXPECT_FALSE(data.viewContext().hasChanges()) << "the first change's save takes the later one along";
}

TEST_F(StoreContainerTest, WaitingSavesOutliveTheContainer) {
    {
        GSData data;
        data.launch();
        makeAccount(data.viewContext());
        data.viewContext().processPendingChanges();
    }
    queue().drain();
}

TEST_F(StoreContainerTest, SaysWhyThereIsNoStore) {
    writeFileBytes(store(), "no store at all");
    GSData data;
    data.launch();
    ASSERT_TRUE(data.loadError().has_value());
    EXPECT_EQ(data.loadError()->kind, StoreError::Kind::kNotAStore);
    EXPECT_EQ(fileBytes(store()), "no store at all");
    EXPECT_EQ(defaultAccount(data.viewContext()), nullptr);
    EXPECT_FALSE(data.fixDisplayOrders());

    environment_->containerDirectory.reset();
    GSData homeless;
    homeless.launch();
    ASSERT_TRUE(homeless.loadError().has_value());
    EXPECT_EQ(homeless.loadError()->kind, StoreError::Kind::kNoLocation);
    EXPECT_EQ(homeless.documentsDirectory(), std::nullopt);
    homeless.moveStorageToApplicationGroup();
    EXPECT_EQ(homeless.lastUpdateDate(), now());
}

TEST_F(StoreContainerTest, LastUpdateIsTheLogsTime) {
    GSData data;
    EXPECT_EQ(data.lastUpdateDate(), now()) << "not launched yet";
    data.launch();
    makeAccount(data.viewContext());
    ASSERT_EQ(data.viewContext().save(), std::nullopt);
    const fs::path log = store().string() + "-wal";
    const auto time =
        fs::file_time_type::clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(1'600'000'000)));
    fs::last_write_time(log, time);
    EXPECT_EQ(data.lastUpdateDate(), dateFromSecondsSince1970(1'600'000'000));
    fs::rename(log, log.string() + ".away");
    EXPECT_EQ(data.lastUpdateDate(), now());
    fs::rename(log.string() + ".away", log);
}

class StoreRelocationTest : public StoreContainerTest {
  protected:
    StoreRelocationTest() { environment_->documentsDirectory = documents(); }

    fs::path documents() { return documents_.path(); }
    fs::path container() { return environment_.containerDirectory(); }
    std::string contained(const char* name) { return fileBytes(container() / name); }

  private:
    TemporaryDirectory documents_;
};

TEST_F(StoreRelocationTest, CopiesTheStoreWithItsCompanions) {
    for (const char* name : {"Plorix.sqlite", "Plorix.sqlite-wal", "Other.sqlite", ".Plorix.sqlite"}) {
        writeFileBytes(documents() / name, std::string("new ") + name);
    }
    ASSERT_EQ(mkfifo((documents() / "Plorix.sqlite-pipe").c_str(), 0600), 0);
    writeFileBytes(container() / "Plorix.sqlite", "old");
    writeFileBytes(container() / "Plorix.sqlite-shm", "old index");
    writeFileBytes(container() / "Other.sqlite", "kept");
    GSData().moveStorageToApplicationGroup();
    EXPECT_EQ(contained("Plorix.sqlite"), "new Plorix.sqlite");
    EXPECT_EQ(contained("Plorix.sqlite-wal"), "new Plorix.sqlite-wal");
    EXPECT_EQ(contained("Other.sqlite"), "kept");
    for (const char* name : {"Plorix.sqlite-shm", ".Plorix.sqlite", "Plorix.sqlite-pipe"}) {
        EXPECT_FALSE(fs::exists(container() / name)) << name;
    }
    EXPECT_EQ(fs::status(container() / "Plorix.sqlite").permissions(), fs::perms(0600));
    EXPECT_TRUE(fs::exists(documents() / "Plorix.sqlite")) << "a copy, not a move";
}

TEST_F(StoreRelocationTest, LeavesAStoreThatIsInItsPlace) {
    writeFileBytes(container() / "Plorix.sqlite", "here");
    environment_->documentsDirectory = container() / "." / "";
    GSData().moveStorageToApplicationGroup();
    EXPECT_EQ(contained("Plorix.sqlite"), "here");
}

TEST_F(StoreRelocationTest, AFailedCopyLeavesNothing) {
    writeFileBytes(documents() / "Plorix.sqlite", "new");
    writeFileBytes(documents() / "Plorix.sqlite-wal", "new log");
    writeFileBytes(container() / "Plorix.sqlite", "old");
    fs::create_directories(container() / ".Plorix.sqlite.partial" / "in the way");
    GSData().moveStorageToApplicationGroup();
    EXPECT_FALSE(fs::exists(container() / "Plorix.sqlite"));
    EXPECT_EQ(contained("Plorix.sqlite-wal"), "new log") << "file by file";
}

class SharedStoreTest : public ModelTest {};

TEST_F(SharedStoreTest, MergesWhatAnotherContextSaved) {
    plant(list(), "A");
    save();
    const auto background = data().newBackgroundContext();
    const auto token = NotificationCenter::defaultCenter().addObserver(
        kDidSaveNotification, background.get(),
        [&](const Notification& saved) { data().mergeChangesFromContextDidSaveNotification(&saved); });
    background->fetch<GTask>({}).front()->setName(u"Renamed");
    ASSERT_EQ(background->save(), std::nullopt);
    NotificationCenter::defaultCenter().removeObserver(token);
    const Notification foreign{kDidSaveNotification, nullptr, std::string("no changes")};
    for (const Notification* notification : {&foreign, static_cast<const Notification*>(nullptr)}) {
        data().mergeChangesFromContextDidSaveNotification(notification);
    }
    EXPECT_EQ(treeText(list()), "Renamed");
    EXPECT_FALSE(context().hasChanges());
}

TEST_F(SharedStoreTest, RepairsListedAccountsOnly) {
    GUser& unlisted = makeAccount(context());
    unlisted.setAccountType(kUnlistedAccountType);
    GList& left = makeList(unlisted, u"List");
    GList& repaired = makeList(makeAccount(context()), u"List");
    for (GList* list : {&left, &repaired}) plant(*list, "A@3(B@1) C@9");
    list().setDisplayOrder(4);
    makeList(account(), u"Sound");
    EXPECT_TRUE(data().fixDisplayOrders());
    EXPECT_EQ(account().orderedLists().front()->name(), u"Sound");
    EXPECT_EQ(list().displayOrder(), 1) << "lists are renumbered as well";
    EXPECT_EQ(treeText(repaired), "A(B) C");
    EXPECT_EQ(treeText(left), "A@3(B) C@9");
    EXPECT_FALSE(data().fixDisplayOrders());
}

}  // namespace
}  // namespace corvane
