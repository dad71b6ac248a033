#include "platform/store/SqliteStore.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <map>

#include "StoreTestFixture.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// Every file of a directory with its bytes; what is no regular file has none.
std::map<std::string, std::string> filesIn(const fs::path& directory) {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        files[entry.path().filename()] = entry.is_regular_file() ? fileBytes(entry.path()) : "";
    }
    return files;
}

std::string textOf(SqliteStore& store, const std::string& sql) {
    auto prepared = store.prepare(sql);
    auto* statement = std::get_if<SqliteStatement>(&prepared);
    if (!statement) return std::get<StoreError>(prepared).message;
    return statement->step() == SqliteStatement::Step::kRow ? std::string(statement->utf8(0)) : "no row";
}

// Files that are no store

void makeEmptyFile(const fs::path& file) { writeFileBytes(file, ""); }
void makePipe(const fs::path& file) { mkfifo(file.c_str(), 0600); }

void makeTextWithCompanions(const fs::path& file) {
    writeFileBytes(file, std::string(8192, 'x'));
    writeFileBytes(file.string() + "-wal", std::string(40000, 'w'));
    writeFileBytes(file.string() + "-journal", std::string(5000, 'j'));
}

void makeForeignStoreInItsLog(const fs::path& file) {
    PlainDatabase(file).execute(
        "PRAGMA journal_mode=wal;"
        "CREATE TABLE Z_METADATA (Z_VERSION INTEGER PRIMARY KEY, Z_UUID VARCHAR(255), Z_PLIST BLOB);"
        "CREATE TABLE Z_PRIMARYKEY (Z_ENT INTEGER PRIMARY KEY, Z_NAME VARCHAR, Z_SUPER INTEGER, Z_MAX "
        "INTEGER); INSERT INTO Z_PRIMARYKEY VALUES (1, 'Song', 0, 0)");
    fs::remove(file.string() + "-shm");
}

void makeStoreWithoutAccounts(const fs::path& file) {
    writePlatformStore(file);
    PlainDatabase(file).execute(
        "DELETE FROM Z_PRIMARYKEY WHERE Z_NAME = 'GUser'; PRAGMA wal_checkpoint(TRUNCATE)");
}

void makeStoreWithoutTaskTable(const fs::path& file) {
    writePlatformStore(file);
    PlainDatabase(file).execute("DROP TABLE ZGTASK; PRAGMA wal_checkpoint(TRUNCATE)");
}

void makeLogWithoutStore(const fs::path& file) {
    writePlatformStore(file);
    commitAndDie(file, "UPDATE ZGUSER SET ZNAME = 'I'");
    fs::remove(file);
}

TEST_F(StoreFileTest, LeavesWhatIsNoStoreUntouched) {
    struct Refusal {
        const char* what;
        void (*prepare)(const fs::path& file);
        StoreError::Kind expected;
    };
    const Refusal refusals[] = {
        {"an empty file",                       &makeEmptyFile,             StoreError::Kind::kNotAStore },
        {"a pipe",                              &makePipe,                  StoreError::Kind::kNotAStore },
        {"a text with companions of that name", &makeTextWithCompanions,    StoreError::Kind::kNotAStore },
        {"another store, all in its log",       &makeForeignStoreInItsLog,  StoreError::Kind::kNotAStore },
        {"a store without accounts",            &makeStoreWithoutAccounts,  StoreError::Kind::kNotAStore },
        {"a store without its task table",      &makeStoreWithoutTaskTable, StoreError::Kind::kNotAStore },
        {"the log of a store that is gone",     &makeLogWithoutStore,       StoreError::Kind::kCannotOpen},
    };
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.what);
        const TemporaryDirectory place;
        refusal.prepare(place.path() / "Plorix.sqlite");
        const auto before = filesIn(place.path());
        const auto opened = SqliteStore::open(storeAt(place.path() / "Plorix.sqlite"), storeFileModel());
        const auto* error = std::get_if<StoreError>(&opened);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, refusal.expected) << error->message;
        EXPECT_TRUE(filesIn(place.path()) == before);
    }
}

TEST_F(StoreFileTest, MakesNothingWhereNothingIsWanted) {
    PersistentStoreDescription existing = storeAt(file);
    existing.createsMissingStore = false;
    for (const PersistentStoreDescription& description :
         {existing, storeAt(directory.path() / "none" / "Plorix.sqlite")}) {
        const auto opened = SqliteStore::open(description, storeFileModel());
        ASSERT_TRUE(std::holds_alternative<StoreError>(opened)) << description.file;
        EXPECT_EQ(std::get<StoreError>(opened).kind, StoreError::Kind::kCannotOpen) << description.file;
    }
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

// Reading

TEST_F(StoreFileTest, ReadingLeavesFileAndLogAsTheyWere) {
    const std::tuple<const char*, std::vector<fs::path>, bool> rows[] = {
        {"at rest",                                {},           false},
        {"copied without companions",              {log, index}, false},
        {"rows in the log only",                   {},           true },
        {"copied with its log, without the index", {index},      true },
    };
    for (const auto& [what, missing, hasLastSave] : rows) {
        SCOPED_TRACE(what);
        for (const fs::path& part : {file, log, index}) fs::remove(part);
        writePlatformStore(file);
        if (hasLastSave) commitAndDie(file, "UPDATE ZGTASK SET ZNAME = 'Tea' WHERE Z_PK = 1");
        for (const fs::path& part : missing) fs::remove(part);
        const std::string before = fileBytes(file);
        const std::string logBefore = fs::exists(log) ? fileBytes(log) : "";
        EXPECT_EQ(taskNames(file), hasLastSave ? "Tea Bread Report" : "Milk Bread Report");
        EXPECT_TRUE(fileBytes(file) == before);
        EXPECT_TRUE(fileBytes(log) == logBefore) << "its time is the store's last change";
    }
}

TEST_F(PlatformStoreTest, LendsOneTextTwice) {
    const auto store = openedStore(file);
    const std::string sql = "SELECT Z_PK FROM ZGTASK ORDER BY Z_PK";
    std::string pairs;
    auto outer = store->prepare(sql);
    while (std::get<0>(outer).step() == SqliteStatement::Step::kRow) {
        auto inner = store->prepare(sql);
        while (std::get<0>(inner).step() == SqliteStatement::Step::kRow) {
            pairs += std::to_string(std::get<0>(outer).integer(0) * 10 + std::get<0>(inner).integer(0)) + " ";
        }
    }
    EXPECT_EQ(pairs, "11 12 13 21 22 23 31 32 33 ");
    for (int i = 0; i < 500; ++i) {  // more texts than are kept
        EXPECT_EQ(textOf(*store, "SELECT 'text " + std::to_string(i) + "'"), "text " + std::to_string(i));
    }
    EXPECT_THAT(textOf(*store, "SELECT ZNOTHING FROM ZGTASK"), HasSubstr("no such column"));
}

// The schema

TEST_F(StoreFileTest, FollowsAMigrationOfTheApplication) {
    writePlatformStore(file, {.model = PlatformStoreShape::Model::kOlder});
    const auto store = openedStore(file);
    const SelectList& list = store->selectList(listEntity());
    const std::int64_t before = store->dataVersion();
    ASSERT_THAT(list.text, testing::Not(HasSubstr("ZISISOLATED")));
    executeElsewhere(
        "BEGIN; ALTER TABLE ZGLIST ADD COLUMN ZISISOLATED INTEGER; UPDATE Z_PRIMARYKEY SET Z_ENT = Z_ENT + "
        "10; COMMIT");
    EXPECT_NE(store->dataVersion(), before);
    EXPECT_TRUE(store->hasColumn(listEntity(), propertyOf(listEntity(), "isIsolated")));
    EXPECT_EQ(&store->selectList(listEntity()), &list) << "who holds it sees the new column";
    EXPECT_THAT(list.text, HasSubstr("t0.ZISISOLATED"));

    SaveTransaction save(*store);
    save.insertRow(userEntity(), save.takeKeys(userEntity(), 1), {});
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(rows("SELECT Z_ENT FROM ZGUSER WHERE Z_PK = 2"), "13");
}

// Other programs

TEST_F(PlatformStoreTest, DataVersionMovesWithCommitsOfOthersOnly) {
    const auto store = openedStore(file);
    const auto other = openedStore(file);
    const std::int64_t before = store->dataVersion();
    EXPECT_FALSE(renameTask(*store, u"Tea"));
    {
        SaveTransaction abandoned(*other);
        abandoned.updateRow(taskEntity(), 1, 2, {ofTask("name", u"Coffee")});
    }
    EXPECT_EQ(store->dataVersion(), before);
    EXPECT_FALSE(renameTask(*other, u"Coffee"));
    const std::int64_t after = store->dataVersion();
    EXPECT_NE(after, before);
    EXPECT_EQ(store->dataVersion(), after);
}

TEST_F(PlatformStoreTest, NoticesAnotherFileUnderItsName) {
    const auto store = openedStore(file);
    EXPECT_FALSE(store->isReplaced());
    writePlatformStore(directory.path() / "copy.sqlite");
    fs::rename(directory.path() / "copy.sqlite", file);
    EXPECT_TRUE(store->isReplaced());
    SaveTransaction save(*store);
    EXPECT_TRUE(save.failed()) << "the rows would go to a file that nobody finds";
}

}  // namespace
}  // namespace corvane
