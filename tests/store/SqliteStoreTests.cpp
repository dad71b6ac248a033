#include "platform/store/SqliteStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>

#include "StoreFileModel.h"
#include "platform/store/SaveTransaction.h"
#include "support/FileBytes.h"
#include "support/OtherProcess.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using Files = std::map<std::string, std::size_t>;

// Every file of a directory with a hash of its bytes.
Files filesIn(const fs::path& directory) {
    Files files;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        const std::string bytes = entry.is_regular_file() ? fileBytes(entry.path()) : "";
        files[entry.path().filename().string()] = std::hash<std::string>()(bytes);
    }
    return files;
}

// All rows of an entity, one a line, the columns of its select list with "|" between.
std::string rowsOf(SqliteStore& store, const EntityDescription& entity) {
    auto prepared = store.prepare("SELECT " + store.selectList(entity).text + " FROM " + entity.table() +
                                  " t0 ORDER BY t0.Z_PK");
    if (const auto* error = std::get_if<StoreError>(&prepared)) return error->message;
    auto& statement = std::get<SqliteStatement>(prepared);
    std::string rows;
    auto step = statement.step();
    for (; step == SqliteStatement::Step::kRow; step = statement.step()) {
        rows += rows.empty() ? "" : "\n";
        for (std::size_t i = 0; i < store.selectList(entity).properties.size() + 2; ++i) {
            rows += (i == 0 ? "" : "|") + std::string(statement.utf8(static_cast<int>(i)));
        }
    }
    return step == SqliteStatement::Step::kDone ? rows : store.lastError().message;
}

std::string textOf(SqliteStore& store, const std::string& sql) {
    auto prepared = store.prepare(sql);
    auto* statement = std::get_if<SqliteStatement>(&prepared);
    if (!statement) return std::get<StoreError>(prepared).message;
    return statement->step() == SqliteStatement::Step::kRow ? std::string(statement->utf8(0)) : "no row";
}

const std::string kTaskNames = "SELECT group_concat(ZNAME) FROM (SELECT ZNAME FROM ZGTASK ORDER BY Z_PK)";

struct StoreFileTest : testing::Test {
    TemporaryDirectory directory;
    fs::path file = directory.path() / "Plorix.sqlite";
    fs::path log = directory.path() / "Plorix.sqlite-wal";
    fs::path index = directory.path() / "Plorix.sqlite-shm";
};

// Files that are no store

using Closing = PlainDatabase::Closing;

void makeEmptyFile(const fs::path& file) { writeFileBytes(file, ""); }
void makeText(const fs::path& file) { writeFileBytes(file, "Milk\nBread\n"); }
void makePipe(const fs::path& file) { mkfifo(file.c_str(), 0600); }
void makeDirectory(const fs::path& file) { fs::create_directory(file); }

void makeTextWithCompanions(const fs::path& file) {
    writeFileBytes(file, std::string(8192, 'x'));
    writeFileBytes(file.string() + "-wal", std::string(40000, 'w'));
    writeFileBytes(file.string() + "-journal", std::string(5000, 'j'));
}

void makeForeignStore(const fs::path& file, const char* journalMode, Closing closing) {
    PlainDatabase database(file, closing);
    database.execute(std::string("PRAGMA journal_mode=") + journalMode);
    database.execute(
        "CREATE TABLE Z_METADATA (Z_VERSION INTEGER PRIMARY KEY, Z_UUID VARCHAR(255), Z_PLIST BLOB);"
        "CREATE TABLE Z_PRIMARYKEY (Z_ENT INTEGER PRIMARY KEY, Z_NAME VARCHAR, Z_SUPER INTEGER, Z_MAX "
        "INTEGER);"
        "INSERT INTO Z_PRIMARYKEY VALUES (1, 'Song', 0, 0)");
}

void makeForeignJournalStore(const fs::path& file) { makeForeignStore(file, "delete", Closing::kLikeSqlite); }

void makeForeignStoreWithoutLog(const fs::path& file) { makeForeignStore(file, "wal", Closing::kLikeSqlite); }

void makeForeignStoreInItsLog(const fs::path& file) {
    makeForeignStore(file, "wal", Closing::kLikePlatform);
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
        {"an empty file",                       &makeEmptyFile,              StoreError::Kind::kNotAStore },
        {"a text",                              &makeText,                   StoreError::Kind::kNotAStore },
        {"a text with companions of that name", &makeTextWithCompanions,     StoreError::Kind::kNotAStore },
        {"a pipe",                              &makePipe,                   StoreError::Kind::kNotAStore },
        {"a directory",                         &makeDirectory,              StoreError::Kind::kNotAStore },
        {"another store, rollback mode",        &makeForeignJournalStore,    StoreError::Kind::kNotAStore },
        {"another store, no companions",        &makeForeignStoreWithoutLog, StoreError::Kind::kNotAStore },
        {"another store, all in its log",       &makeForeignStoreInItsLog,   StoreError::Kind::kNotAStore },
        {"a store without accounts",            &makeStoreWithoutAccounts,   StoreError::Kind::kNotAStore },
        {"a store without its task table",      &makeStoreWithoutTaskTable,  StoreError::Kind::kNotAStore },
        {"the log of a store that is gone",     &makeLogWithoutStore,        StoreError::Kind::kCannotOpen},
    };
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.what);
        const TemporaryDirectory place;
        refusal.prepare(place.path() / "Plorix.sqlite");
        const Files before = filesIn(place.path());
        const auto opened = SqliteStore::open(storeAt(place.path() / "Plorix.sqlite"), storeFileModel());
        const auto* error = std::get_if<StoreError>(&opened);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, refusal.expected) << error->message;
        EXPECT_EQ(filesIn(place.path()), before);
    }
}

TEST_F(StoreFileTest, SaysWhyNothingIsThere) {
    PersistentStoreDescription existing = storeAt(file);
    existing.createsMissingStore = false;
    const std::pair<PersistentStoreDescription, StoreError::Kind> rows[] = {
        {storeAt({}),                                          StoreError::Kind::kNoLocation},
        {storeAt(directory.path() / "none" / "Plorix.sqlite"), StoreError::Kind::kCannotOpen},
        {existing,                                             StoreError::Kind::kCannotOpen},
    };
    for (const auto& [description, kind] : rows) {
        const auto opened = SqliteStore::open(description, storeFileModel());
        ASSERT_TRUE(std::holds_alternative<StoreError>(opened)) << description.file;
        EXPECT_EQ(std::get<StoreError>(opened).kind, kind) << description.file;
    }
    EXPECT_TRUE(filesIn(directory.path()).empty());
}

// Reading

TEST_F(StoreFileTest, ReadingLeavesFileAndLogAsTheyWere) {
    struct Row {
        const char* what;
        std::vector<fs::path> missing;
        const char* lastSave;
        const char* expected;
    };
    const char* rename = "UPDATE ZGTASK SET ZNAME = 'Oat milk', Z_OPT = 2 WHERE Z_PK = 1";
    const Row rows[] = {
        {"at rest",                                {},           nullptr, "Milk,Bread,Report"    },
        {"copied without companions",              {log, index}, nullptr, "Milk,Bread,Report"    },
        {"rows in the log only",                   {},           rename,  "Oat milk,Bread,Report"},
        {"copied with its log, without the index", {index},      rename,  "Oat milk,Bread,Report"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        for (const fs::path& part : {file, log, index}) fs::remove(part);
        writePlatformStore(file);
        if (row.lastSave) commitAndDie(file, row.lastSave);
        for (const fs::path& part : row.missing) fs::remove(part);
        Files before = filesIn(directory.path());
        EXPECT_EQ(textOf(*openedStore(file), kTaskNames), row.expected);
        Files after = filesIn(directory.path());
        EXPECT_EQ(after["Plorix.sqlite"], before["Plorix.sqlite"]);
        if (before.contains("Plorix.sqlite-wal")) {
            EXPECT_EQ(after["Plorix.sqlite-wal"], before["Plorix.sqlite-wal"]);
        }
        EXPECT_EQ(fs::file_size(log) > 0, row.lastSave != nullptr) << "its time is the store's last change";
    }
}

TEST_F(StoreFileTest, ShowsNothingOfAnUnfinishedSave) {
    writePlatformStore(file);
    runInDyingProcess([&] {
        auto* database = new PlainDatabase(file);
        // A cache of a few pages: most of the rows are in the log before their commit, which never comes.
        database->execute("PRAGMA cache_size=5; BEGIN; UPDATE ZGTASK SET ZNAME = 'Changed'");
        database->execute(
            "WITH n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) INSERT INTO "
            "ZGTASK (Z_PK, ZNAME) SELECT i, 'A task with a name of some length' FROM n");
    });
    ASSERT_GT(fs::file_size(log), 100'000U);
    EXPECT_EQ(textOf(*openedStore(file), kTaskNames), "Milk,Bread,Report");
}

TEST_F(StoreFileTest, LeavesAStoreWithARollbackJournalInThatMode) {
    writePlatformStore(file, {.usesRollbackJournal = true});
    {
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.updateRow(taskEntity(), 1, 1,
                                 {
                                     {propertyOf(taskEntity(), "name"), u"Cheese"}
        }),
                  2);
        EXPECT_FALSE(save.commit());
    }
    EXPECT_FALSE(fs::exists(log));
    EXPECT_EQ(PlainDatabase(file).rows("PRAGMA journal_mode"), "delete");
    EXPECT_EQ(textOf(*openedStore(file), kTaskNames), "Cheese,Bread,Report");
}

TEST_F(StoreFileTest, ReadsEveryStorageClassAndBrokenTexts) {
    writePlatformStore(file);
    PlainDatabase(file).execute(
        "UPDATE ZGTASK SET ZPRIORITY = 'high', ZDUEDATE = 'soon', ZNAME = CAST(x'4DC3' AS TEXT), ZNOTES = "
        "NULL, ZREGIONLAT = 9e999 WHERE Z_PK = 1");
    const auto store = openedStore(file);
    auto prepared = store->prepare(
        "SELECT ZPRIORITY, ZDUEDATE, ZNAME, ZNOTES, ZREGIONLAT, ZLIST FROM ZGTASK WHERE Z_PK = ?");
    auto& statement = std::get<SqliteStatement>(prepared);
    statement.bind(1, std::int64_t{1});
    ASSERT_EQ(statement.step(), SqliteStatement::Step::kRow);
    using Class = SqliteStatement::StorageClass;
    const Class classes[] = {Class::kText, Class::kText, Class::kText,
                             Class::kNull, Class::kReal, Class::kInteger};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(statement.storageClass(i), classes[i]) << i;
    EXPECT_EQ(statement.integer(0), 0);
    EXPECT_EQ(statement.real(1), 0.0);
    EXPECT_EQ(statement.utf8(2), "M\xC3");
    EXPECT_EQ(statement.utf8(3), "");
    EXPECT_EQ(statement.bytes(2).size(), 2U);
    EXPECT_EQ(statement.step(), SqliteStatement::Step::kDone);
}

TEST_F(StoreFileTest, BindsEveryKindOfValue) {
    const auto store = openedStore(file);
    const std::u16string loneSurrogate = {u'a', 0xD83D, u'b'};
    const std::u16string withZero(u"a\0b", 3);
    const Bytes bytes = {0x00, 0xFF};
    struct Row {
        Value value;
        const char* expected;  ///< storage class, literal up to a zero, length
    };
    const Row rows[] = {
        {Value(),                         "null NULL"          },
        {true,                            "integer 1 1"        },
        {std::int64_t{-7},                "integer -7 2"       },
        {0.25,                            "real 0.25 4"        },
        {Date(TimeInterval(731332800.5)), "real 731332800.5 11"},
        {std::u16string(u"Br\u00F6t"),    "text 'Br\u00F6t' 5" },
        {std::u16string(),                "text '' 0"          },
        {loneSurrogate,                   "text 'a\uFFFDb' 5"  },
        {withZero,                        "text 'a' 3"         },
        {bytes,                           "blob X'00FF' 2"     },
        {Bytes(),                         "blob X'' 0"         },
    };
    auto prepared = store->prepare(
        "SELECT typeof(?1) || ' ' || quote(?1) || ifnull(' ' || length(CAST(?1 AS BLOB)), '')");
    auto& statement = std::get<SqliteStatement>(prepared);
    for (const auto& [value, expected] : rows) {
        statement.bind(1, value);
        ASSERT_EQ(statement.step(), SqliteStatement::Step::kRow);
        EXPECT_EQ(statement.utf8(0), expected);
        statement.reset();
    }
    statement.bindInteger(9, 1);
    EXPECT_EQ(statement.step(), SqliteStatement::Step::kError) << "there is no ninth parameter";
}

TEST_F(StoreFileTest, LendsOneTextTwice) {
    writePlatformStore(file);
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
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(textOf(*store, "SELECT 'text " + std::to_string(i) + "'"), "text " + std::to_string(i));
    }
    EXPECT_THAT(textOf(*store, "SELECT ZNOTHING FROM ZGTASK"), HasSubstr("no such column"));
}

// The schema

TEST_F(StoreFileTest, ReadsAnOlderStoreWithoutChangingIt) {
    writePlatformStore(file, {.model = PlatformStoreShape::Model::kOlder});
    const std::string before = fileBytes(file);
    {
        const auto store = openedStore(file);
        EXPECT_FALSE(store->hasColumn(listEntity(), propertyOf(listEntity(), "isIsolated")));
        EXPECT_TRUE(store->hasColumn(listEntity(), propertyOf(listEntity(), "name")));
        EXPECT_EQ(store->selectList(userEntity(), "u").text,
                  "u.Z_PK, u.Z_OPT, u.ZDISPLAYORDER, u.ZACCOUNTTYPE, u.ZISDEFAULT, u.ZPASSWORD, u.ZNAME, "
                  "u.ZCREATEDTIMESTAMP");
        EXPECT_EQ(rowsOf(*store, listEntity()), "1|1|Home||0|||1|||0|||\n2|4|Work||0|||0|||1|||");
    }
    EXPECT_EQ(fileBytes(file), before);

    PersistentStoreDescription rigid = storeAt(file);
    rigid.migratesAutomatically = false;
    const auto opened = SqliteStore::open(rigid, storeFileModel());
    ASSERT_TRUE(std::holds_alternative<StoreError>(opened));
    EXPECT_EQ(std::get<StoreError>(opened).kind, StoreError::Kind::kInvalid);
}

TEST_F(StoreFileTest, FollowsAMigrationOfTheApplication) {
    writePlatformStore(file, {.model = PlatformStoreShape::Model::kOlder});
    const auto store = openedStore(file);
    const SelectList& list = store->selectList(listEntity());
    const PropertyIndex isolated = propertyOf(listEntity(), "isIsolated");
    const std::int64_t before = store->dataVersion();
    ASSERT_THAT(list.text, testing::Not(HasSubstr("ZISISOLATED")));
    PlainDatabase(file).execute(
        "BEGIN; ALTER TABLE ZGLIST ADD COLUMN ZISISOLATED INTEGER; UPDATE Z_PRIMARYKEY SET Z_ENT = Z_ENT + "
        "10;"
        "COMMIT");
    EXPECT_NE(store->dataVersion(), before);
    EXPECT_TRUE(store->hasColumn(listEntity(), isolated));
    EXPECT_THAT(store->selectList(listEntity()).text, HasSubstr("t0.ZISISOLATED"));
    EXPECT_EQ(&store->selectList(listEntity()), &list);

    SaveTransaction save(*store);
    save.insertRow(userEntity(), save.takeKeys(userEntity(), 1), {});
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(textOf(*store, "SELECT Z_ENT FROM ZGUSER WHERE Z_PK = 2"), "13");
}

TEST_F(StoreFileTest, DataVersionMovesWithCommitsOfOthersOnly) {
    writePlatformStore(file);
    const auto store = openedStore(file);
    const auto other = openedStore(file);
    const auto renameTask = [](SqliteStore& writer, std::int64_t version, bool commits) {
        SaveTransaction save(writer);
        save.updateRow(taskEntity(), 1, version,
                       {
                           {propertyOf(taskEntity(), "name"), u"Tea"}
        });
        EXPECT_EQ(commits && save.commit().has_value(), false);
    };
    const std::int64_t before = store->dataVersion();
    renameTask(*store, 1, true);
    renameTask(*other, 2, false);
    EXPECT_EQ(store->dataVersion(), before);
    renameTask(*other, 2, true);
    const std::int64_t after = store->dataVersion();
    EXPECT_NE(after, before);
    EXPECT_EQ(store->dataVersion(), after);
}

TEST_F(StoreFileTest, NoticesAnotherFileUnderItsName) {
    writePlatformStore(file);
    const auto store = openedStore(file);
    EXPECT_FALSE(store->isReplaced());
    const fs::path copy = directory.path() / "copy.sqlite";
    writePlatformStore(copy);
    fs::rename(copy, file);
    EXPECT_TRUE(store->isReplaced());
    SaveTransaction save(*store);
    EXPECT_TRUE(save.failed()) << "the rows would go to a file that nobody finds";
}

}  // namespace
}  // namespace corvane
