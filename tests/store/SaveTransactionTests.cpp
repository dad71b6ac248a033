#include "platform/store/SaveTransaction.h"

#include <gmock/gmock.h>

#include <limits>

#include "StoreTestFixture.h"
#include "support/OtherProcess.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Model = PlatformStoreShape::Model;

struct SaveTest : PlatformStoreTest {
    std::unique_ptr<SqliteStore> impatientStore() {
        PersistentStoreDescription description = storeAt(file);
        description.busyTimeout = std::chrono::milliseconds(20);
        return openedStore(description);
    }
};

TEST_F(SaveTest, WritesANewRowAsThePlatformDoes) {
    {
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.takeKeys(taskEntity(), 2), 4);
        EXPECT_EQ(save.takeKeys(listEntity(), 1), 3);
        save.insertRow(taskEntity(), 5, {ofTask("name", u"Tea"), ofTask("list", std::int64_t{2})});
        save.insertRow(taskEntity(), 4,
                       {ofTask("dueDate", Date(TimeInterval(100))), ofTask("removed", false)});
        EXPECT_FALSE(save.commit());
    }
    EXPECT_EQ(
        rows("SELECT Z_PK, Z_ENT, Z_OPT, ZNAME, ZLIST, ZDUEDATE, typeof(ZDUEDATE), ZREMOVED FROM ZGTASK "
             "WHERE Z_PK > 3"),
        "4|2|1|NULL|NULL|100|integer|0\n5|2|1|Tea|2|NULL|null|NULL");
    EXPECT_EQ(rows("SELECT * FROM Z_PRIMARYKEY"), "1|GList|0|3\n2|GTask|0|5\n3|GUser|0|1");
}

TEST_F(SaveTest, TakesNumbersThatNobodyHas) {
    const std::tuple<const char*, const char*, std::int64_t> rows[] = {
        {"rows above the counter, left by a tool", "1",                   4 },
        {"the last rows deleted",                  "90",                  91},
        {"no counter",                             "NULL",                4 },
        {"all numbers used",                       "9223372036854775806", 0 },
    };
    for (const auto& [what, counter, expected] : rows) {
        SCOPED_TRACE(what);
        executeElsewhere(std::string("UPDATE Z_PRIMARYKEY SET Z_MAX = ") + counter +
                         " WHERE Z_NAME = 'GTask'");
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.takeKeys(taskEntity(), 2), expected);
        EXPECT_EQ(save.failed(), expected == 0);
    }
}

TEST_F(SaveTest, MeetsEveryVersionThatMayStandInARow) {
    const std::tuple<const char*, std::int64_t, const char*> kRows[] = {
        {"NULL",                0,                                        "1" },
        {"7",                   7,                                        "8" },
        {"'odd'",               0,                                        "1" },
        {"-3",                  -3,                                       "-2"},
        {"2.5",                 2,                                        "3" },
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max(), "1" },
    };
    for (const auto& [stored, read, written] : kRows) {
        SCOPED_TRACE(stored);
        executeElsewhere(std::string("UPDATE ZGTASK SET Z_OPT = ") + stored);
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.version(taskEntity(), 1), read);
        EXPECT_FALSE(save.updateRow(taskEntity(), 1, 99, {ofTask("name", u"no")}));
        EXPECT_TRUE(save.updateRow(taskEntity(), 1, read, {ofTask("name", u"yes")}));
        EXPECT_FALSE(save.deleteRow(taskEntity(), 2, 99));
        EXPECT_TRUE(save.deleteRow(taskEntity(), 2, read));
        EXPECT_FALSE(save.commit()) << "a row that has changed is the caller's to merge, not an error";
        EXPECT_EQ(rows("SELECT Z_PK, Z_OPT FROM ZGTASK WHERE ZNAME = 'yes'"), std::string("1|") + written);
        executeElsewhere("INSERT INTO ZGTASK (Z_PK) VALUES (2)");
    }
}

// Stores of newer and older applications

TEST_F(StoreFileTest, SavingKeepsEverythingThatItDoesNotKnow) {
    writePlatformStore(file, {.model = Model::kNewer, .hasDerivedAttributes = true});
    const std::string before = unownedContent(file);
    {
        const TestEnvironment environment({.now = "2001-01-02 00:00"});
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        save.insertRow(taskEntity(), save.takeKeys(taskEntity(), 1), {ofTask("name", u"Tea")});
        save.updateRow(taskEntity(), 1, 1, {ofTask("name", u"Oat milk")});
        save.deleteRow(taskEntity(), 2, 3);
        save.updateRow(listEntity(), 2, 4, {ofList("name", u"Office")});
        save.insertRow(listEntity(), save.takeKeys(listEntity(), 1), {ofList("name", u"Garden")});
        save.updateRow(userEntity(), 1, 1, {ofUser("name", u"I")});
        ASSERT_FALSE(save.commit());
    }
    EXPECT_EQ(unownedContent(file), before);
    EXPECT_EQ(rows("SELECT Z_PK, Z_ENT, Z_OPT, ZNAME, ZESTIMATE, ZASSIGNEE FROM ZGTASK"),
              "1|3|2|Oat milk|0.25|Ann\n3|3|2|Report|0.25|Ann\n4|3|1|Tea|NULL|NULL");
    EXPECT_EQ(rows("SELECT Z_PK, Z_OPT, ZNAME, ZSYMBOL, ZCHANGEDON FROM ZGLIST"),
              "1|1|Home|00FF10|NULL\n2|5|Office|00FF10|86400\n3|1|Garden|NULL|86400");
    EXPECT_EQ(rows("SELECT * FROM Z_PRIMARYKEY"), "1|GList|0|3\n2|GNote|0|1\n3|GTask|0|4\n4|GUser|0|1");
    EXPECT_EQ(rows("PRAGMA integrity_check"), "ok");
}

TEST_F(SaveTest, RefusesToWritePastATriggerThatItCannotRun) {
    executeElsewhere(
        "CREATE TRIGGER Z_DA_new AFTER UPDATE OF Z_OPT ON ZGTASK BEGIN SELECT NSCoreDataSomethingNew(1); "
        "END");
    const auto store = openedStore(file);
    const auto error = renameTask(*store, u"x");
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message, HasSubstr("no such function: NSCoreDataSomethingNew"));
    EXPECT_EQ(taskNames(file), "Milk Bread Report");
}

struct OlderStoreTest : StoreFileTest {
    void SetUp() override { writePlatformStore(file, {.model = Model::kOlder}); }
};

TEST_F(OlderStoreTest, KeepsItsSchemaWhileDefaultsAreSaved) {
    const std::string before = unownedContent(file);
    const auto store = openedStore(file);
    SaveTransaction save(*store);
    save.insertRow(listEntity(), save.takeKeys(listEntity(), 1),
                   {ofList("name", u"Garden"), ofList("isIsolated", false), ofList("user", Value())});
    save.updateRow(taskEntity(), 1, 1,
                   {ofTask("regionLat", 0.0), ofTask("name", u"Oat milk"), ofTask("notes", Value())});
    save.nullifyReferences(listEntity(), propertyOf(listEntity(), "user"), 1);
    EXPECT_THAT(save.referencingKeys(listEntity(), propertyOf(listEntity(), "user"), 1), testing::IsEmpty());
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(unownedContent(file), before);
    EXPECT_EQ(rows("SELECT Z_OPT, ZNAME FROM ZGTASK WHERE Z_PK = 1"), "2|Oat milk");

    PersistentStoreDescription rigid = storeAt(file);
    rigid.migratesAutomatically = false;
    const auto opened = SqliteStore::open(rigid, storeFileModel());
    ASSERT_TRUE(std::holds_alternative<StoreError>(opened));
    EXPECT_EQ(std::get<StoreError>(opened).kind, StoreError::Kind::kInvalid);
}

TEST_F(OlderStoreTest, GetsAColumnWhenAValueNeedsIt) {
    const auto store = openedStore(file);
    {
        SaveTransaction save(*store);
        save.updateRow(listEntity(), 2, 4, {ofList("isIsolated", true)});
        save.insertRow(listEntity(), 3, {ofList("user", std::int64_t{1}), ofList("color", Bytes{1, 2})});
        save.insertRow(listEntity(), 4, {ofList("user", std::int64_t{1})});
        save.updateRow(taskEntity(), 1, 1, {ofTask("notes", u"now"), ofTask("regionLat", 52.5)});
        EXPECT_FALSE(save.commit());
    }
    EXPECT_EQ(rows("SELECT name, type FROM pragma_table_info('ZGLIST') ORDER BY cid DESC LIMIT 3"),
              "ZCOLOR|BLOB\nZUSER|INTEGER\nZISISOLATED|INTEGER");
    // Rows that were there had read as 0, and still do to a query.
    EXPECT_EQ(rows("SELECT Z_PK, Z_OPT, ZISISOLATED, ZUSER, ZCOLOR FROM ZGLIST"),
              "1|1|0|NULL|NULL\n2|5|1|NULL|NULL\n3|1|NULL|1|0102\n4|1|NULL|1|NULL");
    EXPECT_EQ(rows("SELECT Z_PK, ZREGIONLAT, ZNOTES FROM ZGTASK"), "1|52.5|now\n2|0.0|NULL\n3|0.0|NULL");
    EXPECT_TRUE(store->hasColumn(listEntity(), propertyOf(listEntity(), "isIsolated")));
}

TEST_F(OlderStoreTest, LosesTheColumnAgainWithAFailedSave) {
    const std::string before = unownedContent(file);
    const auto store = openedStore(file);
    {
        SaveTransaction abandoned(*store);
        abandoned.updateRow(listEntity(), 1, 1, {ofList("isIsolated", true)});
        ASSERT_FALSE(abandoned.failed());
    }
    EXPECT_EQ(unownedContent(file), before);
    EXPECT_FALSE(store->hasColumn(listEntity(), propertyOf(listEntity(), "isIsolated")));
    // Another program's column brings the schema to the very number that ours had.
    executeElsewhere("ALTER TABLE ZGTASK ADD COLUMN ZOTHER INTEGER");
    EXPECT_GT(store->dataVersion(), 0);
    EXPECT_THAT(store->selectList(listEntity()).text, testing::Not(HasSubstr("ZISISOLATED")));
    SaveTransaction save(*store);
    save.updateRow(listEntity(), 1, 1, {ofList("isIsolated", true)});
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(rows("SELECT ZISISOLATED FROM ZGLIST"), "1\n0");
}

TEST_F(SaveTest, LeavesAStoreWithHistoryToItsApplication) {
    const fs::path other = directory.path() / "history.sqlite";
    writePlatformStore(other, {.hasHistory = true});
    EXPECT_TRUE(openedStore(other)->isReadOnly());

    PlainDatabase application(file);
    const auto store = openedStore(file);
    EXPECT_FALSE(store->isReadOnly());
    application.execute("CREATE TABLE ATRANSACTION (Z_PK INTEGER PRIMARY KEY)");
    const auto error = renameTask(*store, u"Tea");
    ASSERT_TRUE(error) << "the history was turned on while the store was open";
    EXPECT_EQ(error->kind, StoreError::Kind::kReadOnly);
    EXPECT_THAT(error->message, HasSubstr("history"));
}

// Other programs

TEST_F(SaveTest, WaitsForALockAndThenSaysThatItIsBusy) {
    const auto store = impatientStore();
    {
        OtherProcess holder([&](const OtherProcess::Progress& progress) {
            PlainDatabase database(file);
            database.execute("BEGIN IMMEDIATE; UPDATE ZGTASK SET ZNAME = 'half'");
            progress();
            while (true) pause();
        });
        holder.waitForProgress();
        const auto error = renameTask(*store, u"Tea");
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, StoreError::Kind::kBusy) << error->message;
    }
    EXPECT_FALSE(renameTask(*store, u"Tea")) << "the lock died with its holder";
    EXPECT_EQ(taskNames(file), "Tea Bread Report");
}

TEST_F(SaveTest, LeavesAStoreWithARollbackJournalInThatMode) {
    fs::remove(log);
    fs::remove(file);
    writePlatformStore(file, {.usesRollbackJournal = true});
    const auto store = impatientStore();
    {
        OtherProcess reader([&](const OtherProcess::Progress& progress) {
            PlainDatabase database(file);
            database.execute("BEGIN; SELECT * FROM ZGTASK");
            progress();
            while (true) pause();
        });
        reader.waitForProgress();
        const auto error = renameTask(*store, u"Tea");
        ASSERT_TRUE(error) << "found out at the commit only";
        EXPECT_EQ(error->kind, StoreError::Kind::kBusy) << error->message;
        EXPECT_EQ(taskNames(file), "Milk Bread Report");
    }
    EXPECT_FALSE(renameTask(*store, u"Tea"));
    EXPECT_FALSE(fs::exists(log));
    EXPECT_EQ(rows("PRAGMA journal_mode"), "delete");
}

}  // namespace
}  // namespace corvane
