// What happens to a store file from outside: cut, garbled, on a full disk, in a place that cannot be written,
// left by a process that was killed.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "StoreTestFixture.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"
#include "support/OtherProcess.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

struct DamageTest : PlatformStoreTest {
    void addTasks(int count) {
        executeElsewhere("WITH n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                         std::to_string(count) +
                         ") INSERT INTO ZGTASK (Z_PK, Z_ENT, Z_OPT, ZNAME) SELECT i, 2, 1, 'Task' FROM n");
    }
};

TEST_F(DamageTest, ATornLogEndsAtItsLastWholeCommit) {
    commitAndDie(file, "UPDATE ZGTASK SET ZNAME = 'First' WHERE Z_PK = 1");
    commitAndDie(file, "UPDATE ZGTASK SET ZNAME = 'Second' WHERE Z_PK = 1");
    const std::string whole = fileBytes(log);
    std::vector<std::string> seen;
    const auto see = [&](std::size_t length) {
        fs::remove(index);
        writeFileBytes(log, whole.substr(0, length));
        const std::string names = taskNames(file);
        if (seen.empty() || seen.back() != names) seen.push_back(names);
    };
    for (std::size_t length = 0; length < whole.size(); length += length < 64 ? 1 : 1001) see(length);
    see(whole.size());
    EXPECT_THAT(seen, testing::ElementsAre("Milk Bread Report", "First Bread Report", "Second Bread Report"));
}

TEST_F(DamageTest, ACutOrGarbledFileIsAnErrorOrItsRows) {
    addTasks(400);
    executeElsewhere("PRAGMA wal_checkpoint(TRUNCATE)");
    const std::string whole = fileBytes(file);
    const std::string names = taskNames(file);
    std::mt19937 random(20240305);
    const auto attempt = [&](const std::string& bytes) {
        for (const fs::path& part : {log, index}) fs::remove(part);
        writeFileBytes(file, bytes);
        const std::string result = taskNames(file);
        if (random() % 4 != 0) return result;
        auto opened = SqliteStore::open(storeAt(file), storeFileModel());
        if (auto* store = std::get_if<0>(&opened)) static_cast<void>(renameTask(**store, u"Tea"));
        return result;
    };
    for (std::size_t length = 1; length < whole.size(); length += 2047) {
        const std::string result = attempt(whole.substr(0, length));
        // SQLite takes a page that is there in part for one that ends in zeros.
        const bool lacksPages = length + 4096 <= whole.size();
        EXPECT_TRUE(!lacksPages || result.starts_with("error: ")) << length;
    }
    int errors = 0;
    for (int i = 0; i < 150; ++i) {
        std::string garbled = whole;
        const std::size_t start = random() % garbled.size();
        for (std::size_t k = start; k < std::min(start + 40, garbled.size()); ++k)
            garbled[k] = static_cast<char>(random());
        errors += attempt(garbled).starts_with("error: ") ? 1 : 0;
    }
    EXPECT_GT(errors, 0);
    EXPECT_EQ(attempt(whole), names);
}

TEST_F(DamageTest, ASaveThatDiedWithItsRollbackJournalIsUndone) {
    for (const fs::path& part : {file, log, index}) fs::remove(part);
    writePlatformStore(file, {.usesRollbackJournal = true});
    addTasks(400);
    const std::string names = taskNames(file);
    const std::uintmax_t size = fs::file_size(file);
    runInDyingProcess([&] {
        auto* database = new PlainDatabase(file);
        database->execute(
            "PRAGMA cache_size=5; BEGIN; UPDATE ZGTASK SET ZNAME = 'A name of some length', Z_OPT = 9");
    });
    ASSERT_GT(fs::file_size(file.string() + "-journal"), 0U);
    fs::resize_file(file, size - 4096);  // what a save that grows the file looks like half-way
    EXPECT_EQ(taskNames(file), names);
    EXPECT_EQ(rows("PRAGMA integrity_check"), "ok");
}

TEST_F(DamageTest, AFullDiskLosesNothing) {
    const auto store = openedStore(file);
    ASSERT_FALSE(renameTask(*store, u"Tea"));
    {
        const FileSizeLimit limit(fs::file_size(log) + 5000);
        const auto error = renameTask(*store, std::u16string(100'000, u'x'));
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, StoreError::Kind::kNoSpace) << error->message;
        EXPECT_EQ(taskNames(file), "Tea Bread Report");
    }
    EXPECT_FALSE(renameTask(*store, u"Coffee"));
    EXPECT_EQ(taskNames(file), "Coffee Bread Report");
    EXPECT_EQ(rows("PRAGMA integrity_check"), "ok");
}

TEST_F(DamageTest, AFullDiskMakesNoStoreInsteadOfHalfAOne) {
    for (const rlim_t room : {0, 4096, 20'000}) {
        const TemporaryDirectory place;
        {
            const FileSizeLimit limit(room);
            const auto opened = SqliteStore::open(storeAt(place.path() / "new.sqlite"), storeFileModel());
            ASSERT_TRUE(std::holds_alternative<StoreError>(opened)) << room;
            EXPECT_EQ(std::get<StoreError>(opened).kind, StoreError::Kind::kNoSpace) << room;
        }
        EXPECT_TRUE(fs::is_empty(place.path())) << room;
        EXPECT_TRUE(openedStore(place.path() / "new.sqlite")->isOurs()) << room;
    }
}

// The rights of a stranger to files of the tests, also for the administrator. Until the end of the scope.
class StrangersRights {
  public:
    StrangersRights() {
        if (user_ == 0 && seteuid(kStranger) != 0) throw std::runtime_error("no rights to give up");
    }
    ~StrangersRights() { isBack_ = user_ != 0 || seteuid(user_) == 0; }
    StrangersRights(const StrangersRights&) = delete;
    StrangersRights& operator=(const StrangersRights&) = delete;

  private:
    static constexpr uid_t kStranger = 65534;
    uid_t user_ = geteuid();
    bool isBack_ = false;
};

TEST_F(DamageTest, APlaceThatCannotBeWrittenIsShownAndNotSaved) {
    struct Place {
        const char* what;
        mode_t fileMode;
        std::vector<fs::path> missing;
        bool hasLastSave;  ///< left in the log
        const char* names;
    };
    const Place places[] = {
        {"all there",                        0444, {},           false, "Milk Bread Report"},
        {"all there, rows in log",           0444, {},           true,  "Tea Bread Report" },
        {"no companions",                    0444, {log, index}, false, "Milk Bread Report"},
        {"rows in log, no index",            0444, {index},      true,  "Tea Bread Report" },
        {"file may be written",              0666, {log, index}, false, "Milk Bread Report"},
        {"file may be written, rows in log", 0666, {index},      true,  "Tea Bread Report" },
        {"not even read",                    0000, {},           false, nullptr            },
    };
    for (const Place& place : places) {
        SCOPED_TRACE(place.what);
        for (const fs::path& part : {file, log, index}) fs::remove(part);
        writePlatformStore(file);
        if (place.hasLastSave) commitAndDie(file, "UPDATE ZGTASK SET ZNAME = 'Tea' WHERE Z_PK = 1");
        for (const fs::path& part : place.missing) fs::remove(part);
        for (const fs::path& part : {file, log, index}) chmod(part.c_str(), place.fileMode);
        chmod(directory.path().c_str(), 0555);
        const std::string before = fileBytes(file);
        {
            const StrangersRights rights;
            auto opened = SqliteStore::open(storeAt(file), storeFileModel());
            if (const auto* error = std::get_if<StoreError>(&opened)) {
                EXPECT_EQ(place.names, nullptr) << error->message;
                EXPECT_EQ(error->kind, StoreError::Kind::kCannotOpen) << error->message;
            } else {
                SqliteStore& store = *std::get<0>(opened);
                EXPECT_TRUE(store.isReadOnly());
                EXPECT_EQ(taskNames(file), place.names);
                const auto refusal = renameTask(store, u"Coffee");
                ASSERT_TRUE(refusal);
                EXPECT_EQ(refusal->kind, StoreError::Kind::kReadOnly) << refusal->message;
            }
        }
        EXPECT_EQ(fileBytes(file), before);
        chmod(directory.path().c_str(), 0755);
    }
}

// Saves for ever: each one a list with 50 tasks, and the number of the list in the account's row.
void saveForever(const fs::path& file, const OtherProcess::Progress& progress) {
    const auto store = openedStore(file);
    while (true) {
        SaveTransaction save(*store);
        const std::int64_t list = save.takeKeys(listEntity(), 1);
        save.insertRow(listEntity(), list, {ofList("name", u"List")});
        progress();
        const std::int64_t first = save.takeKeys(taskEntity(), 50);
        for (std::int64_t key = first; key < first + 50; ++key) {
            save.insertRow(taskEntity(), key, {ofTask("list", list)});
            if (key % 10 == 0) progress();
        }
        const std::optional<std::int64_t> version = save.version(userEntity(), 1);
        save.updateRow(userEntity(), 1, version.value(), {ofUser("displayOrder", list)});
        progress();
        if (auto error = save.commit()) throw std::runtime_error(error->message);
        progress();
    }
}

TEST_F(DamageTest, AKilledSaveIsThereWholeOrNotAtAll) {
    constexpr const char* kWholeSaves =
        "SELECT (SELECT count(*) FROM ZGLIST l WHERE Z_PK > 2 AND (SELECT count(*) FROM ZGTASK WHERE ZLIST = "
        "l.Z_PK) <> 50), (SELECT count(*) FROM ZGTASK) - 3 = 50 * ((SELECT count(*) FROM ZGLIST) - 2), "
        "(SELECT ZDISPLAYORDER IN (0, (SELECT max(Z_PK) FROM ZGLIST)) FROM ZGUSER), "
        "(SELECT Z_MAX = (SELECT max(Z_PK) FROM ZGTASK) FROM Z_PRIMARYKEY WHERE Z_NAME = 'GTask')";
    std::mt19937 random(20240305);
    for (int round = 0; round < 40; ++round) {
        {
            OtherProcess writer([&](const OtherProcess::Progress& progress) { saveForever(file, progress); });
            writer.waitForProgress(1 + static_cast<int>(random() % 60));
        }
        ASSERT_FALSE(taskNames(file).starts_with("error: "));
        ASSERT_EQ(rows("PRAGMA integrity_check"), "ok");
        ASSERT_EQ(rows(kWholeSaves), "0|1|1|1");
    }
    EXPECT_GT(std::stoi(rows("SELECT count(*) FROM ZGLIST")), 10) << "no save came through";
}

}  // namespace
}  // namespace corvane
