// The container: launch, auto-save, merging, moving of the store.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "ModelFixture.h"
#include "model/Accounts.h"
#include "model/CorvaneUserDefaults.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

void write(const fs::path& file, std::string_view contents) { std::ofstream(file) << contents; }

std::string read(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

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
    queue().advance(TimeInterval(0));
    data.viewContext().insert<GUser>();
    scheduled = 0;
    data.viewContext().processPendingChanges();
    EXPECT_EQ(scheduled, 1) << "one observer of changes";
    ASSERT_EQ(data.viewContext().save(), std::nullopt);

    CountingData again;
    again.launch();
    EXPECT_EQ(again.installations, 0) << "an account is there";
}

TEST_F(StoreContainerTest, AnUnlistedAccountLeavesTheStoreFresh) {
    {
        GSData data;
        data.launch();
        makeAccount(data.viewContext()).setAccountType(kUnlistedAccountType);
        ASSERT_EQ(data.viewContext().save(), std::nullopt);
    }
    CountingData data;
    data.launch();
    EXPECT_EQ(data.installations, 1);
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
    queue().advance(TimeInterval(0.4));
    EXPECT_FALSE(queue().timeUntilNextBlock().has_value());
    GSData other;
    other.launch();
    EXPECT_EQ(allAccounts(other.viewContext()).front()->name(), u"Later");
}

TEST_F(StoreContainerTest, WaitingSavesOutliveTheContainer) {
    {
        GSData data;
        data.launch();
        makeAccount(data.viewContext());
        data.viewContext().processPendingChanges();
    }
    queue().drain();
    GSData data;
    data.launch();
    EXPECT_THAT(allAccounts(data.viewContext()), IsEmpty());
}

TEST_F(StoreContainerTest, SaysWhyThereIsNoStore) {
    write(store(), "no store at all");
    GSData data;
    data.launch();
    ASSERT_TRUE(data.loadError().has_value());
    EXPECT_EQ(data.loadError()->kind, StoreError::Kind::kNotAStore);
    EXPECT_EQ(read(store()), "no store at all");
    EXPECT_THAT(allAccounts(data.viewContext()), IsEmpty());
    EXPECT_EQ(defaultAccount(data.viewContext()), nullptr);
    EXPECT_FALSE(data.fixDisplayOrders());
    EXPECT_EQ(data.lastUpdateDate(), now());
    queue().drain();

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
    StoreRelocationTest() { environment_->documentsDirectory = documents_.path(); }

    fs::path documents() { return documents_.path(); }
    fs::path container() { return environment_.containerDirectory(); }

  private:
    TemporaryDirectory documents_;
};

TEST_F(StoreRelocationTest, CopiesTheStoreWithItsCompanions) {
    for (const char* name : {"Plorix.sqlite", "Plorix.sqlite-wal", "Other.sqlite", ".Plorix.sqlite"}) {
        write(documents() / name, std::string("new ") + name);
    }
    fs::create_directory(documents() / "Plorix.sqlite-directory");
    ASSERT_EQ(mkfifo((documents() / "Plorix.sqlite-pipe").c_str(), 0600), 0);
    write(container() / "Plorix.sqlite", "old");
    write(container() / "Plorix.sqlite-shm", "old index");
    write(container() / "Other.sqlite", "kept");
    GSData().moveStorageToApplicationGroup();
    EXPECT_EQ(read(container() / "Plorix.sqlite"), "new Plorix.sqlite");
    EXPECT_EQ(read(container() / "Plorix.sqlite-wal"), "new Plorix.sqlite-wal");
    EXPECT_FALSE(fs::exists(container() / "Plorix.sqlite-shm")) << "belonged to the replaced store";
    EXPECT_EQ(read(container() / "Other.sqlite"), "kept");
    EXPECT_FALSE(fs::exists(container() / ".Plorix.sqlite"));
    EXPECT_FALSE(fs::exists(container() / "Plorix.sqlite-directory"));
    EXPECT_FALSE(fs::exists(container() / "Plorix.sqlite-pipe"));
    EXPECT_EQ(fs::status(container() / "Plorix.sqlite").permissions(), fs::perms(0600));
    EXPECT_EQ(read(documents() / "Plorix.sqlite"), "new Plorix.sqlite") << "a copy, not a move";
}

TEST_F(StoreRelocationTest, AFailedCopyLeavesNothing) {
    write(documents() / "Plorix.sqlite", "new");
    write(documents() / "Plorix.sqlite-wal", "new log");
    write(container() / "Plorix.sqlite", "old");
    fs::create_directories(container() / ".Plorix.sqlite.partial" / "in the way");
    GSData().moveStorageToApplicationGroup();
    EXPECT_FALSE(fs::exists(container() / "Plorix.sqlite"));
    EXPECT_EQ(read(container() / "Plorix.sqlite-wal"), "new log") << "file by file";
}

TEST_F(StoreRelocationTest, LeavesAStoreThatIsInItsPlace) {
    environment_->documentsDirectory = container() / "." / "";
    write(container() / "Plorix.sqlite", "here");
    GSData().moveStorageToApplicationGroup();
    EXPECT_EQ(read(container() / "Plorix.sqlite"), "here");
    environment_->documentsDirectory = container() / "missing";
    GSData().moveStorageToApplicationGroup();
    EXPECT_EQ(read(container() / "Plorix.sqlite"), "here");
}

TEST_F(StoreContainerTest, TwoContainersShareAStore) {
    GSData first;
    first.launch();
    GList& list = makeList(makeAccount(first.viewContext()), u"List");
    plant(list, "A(B) C");
    ASSERT_EQ(first.viewContext().save(), std::nullopt);
    GSData second;
    second.launch();
    GList& sameList = *defaultAccount(second.viewContext())->defaultList();
    EXPECT_EQ(treeText(sameList), "A(B) C");
    task(sameList, "B").setName(u"Renamed");
    task(sameList, "C").setPriority(7);
    ASSERT_EQ(second.viewContext().save(), std::nullopt);
    task(list, "B").setPriority(5);
    ASSERT_EQ(first.viewContext().save(), std::nullopt);
    list.orderedAllTasks();
    EXPECT_EQ(treeText(list), "A(Renamed) C") << "both edits are kept";
    EXPECT_EQ(task(list, "Renamed").priority(), 5);
    EXPECT_EQ(task(list, "C").priority(), 7);
}

TEST_F(StoreContainerTest, MergesWhatAnotherContextSaved) {
    GSData data;
    data.launch();
    GList& list = makeList(makeAccount(data.viewContext()), u"List");
    plant(list, "A B C");
    ASSERT_EQ(data.viewContext().save(), std::nullopt);
    const auto background = data.newBackgroundContext();
    const auto token = NotificationCenter::defaultCenter().addObserver(
        kDidSaveNotification, background.get(),
        [&](const Notification& saved) { data.mergeChangesFromContextDidSaveNotification(&saved); });
    GList& other = *background->fetch<GList>({}).front();
    task(other, "A").setName(u"Renamed");
    task(other, "B").deleteTask(kKeepTombstone);
    GTask::insertNewTaskToList(other, nullptr, nullptr).setName(u"New");
    ASSERT_EQ(background->save(), std::nullopt);
    NotificationCenter::defaultCenter().removeObserver(token);
    EXPECT_EQ(treeText(list), "New Renamed C");

    data.mergeChangesFromContextDidSaveNotification(nullptr);
    const Notification foreign{kDidSaveNotification, nullptr, std::string("no changes")};
    data.mergeChangesFromContextDidSaveNotification(&foreign);
    EXPECT_EQ(treeText(list), "New Renamed C");
}

TEST_F(StoreContainerTest, RepairsEveryListedAccount) {
    GSData data;
    data.launch();
    GUser& first = makeAccount(data.viewContext());
    GUser& second = makeAccount(data.viewContext());
    GUser& unlisted = makeAccount(data.viewContext());
    unlisted.setAccountType(kUnlistedAccountType);
    std::vector<GList*> lists;
    for (GUser* account : {&first, &second, &unlisted}) {
        lists.push_back(&makeList(*account, u"List"));
        plant(*lists.back(), "A@3(B@1) C@9");
    }
    EXPECT_TRUE(data.fixDisplayOrders());
    EXPECT_EQ(treeText(*lists[0]), "A(B) C");
    EXPECT_EQ(treeText(*lists[1]), "A(B) C");
    EXPECT_EQ(treeText(*lists[2]), "A@3(B) C@9");
    EXPECT_FALSE(data.fixDisplayOrders());
}

TEST_F(StoreContainerTest, ThereIsOneSharedInstance) {
    GSData data;
    const SharedInstanceScope scope(data);
    GSData* seen = nullptr;
    std::thread([&] { seen = &GSData::sharedInstance(); }).join();
    EXPECT_EQ(seen, &data);
    EXPECT_EQ(&corvaneUserDefaults(), environment_->userDefaults.get());
}

}  // namespace
}  // namespace corvane
