#include "platform/store/SaveTransaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "StoreFileModel.h"
#include "platform/store/SqliteStore.h"
#include "support/OtherProcess.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Model = PlatformStoreShape::Model;
using Values = std::vector<SaveTransaction::ChangedValue>;

SaveTransaction::ChangedValue task(std::string_view name, Value value) {
    return {propertyOf(taskEntity(), name), std::move(value)};
}

SaveTransaction::ChangedValue list(std::string_view name, Value value) {
    return {propertyOf(listEntity(), name), std::move(value)};
}

struct SaveTest : testing::Test {
    TemporaryDirectory directory;
    fs::path file = directory.path() / "Plorix.sqlite";

    void SetUp() override { writePlatformStore(file); }
    std::string rows(const std::string& sql) { return PlainDatabase(file).rows(sql); }
};

std::unique_ptr<SqliteStore> impatientStore(const fs::path& file) {
    PersistentStoreDescription description = storeAt(file);
    description.busyTimeout = std::chrono::milliseconds(20);
    return openedStore(description);
}

TEST_F(SaveTest, WritesANewRowAsThePlatformDoes) {
    {
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.takeKeys(taskEntity(), 2), 4);
        EXPECT_EQ(save.takeKeys(listEntity(), 1), 3);
        save.insertRow(taskEntity(), 5, {task("name", u"Tea"), task("list", std::int64_t{2})});
        save.insertRow(taskEntity(), 4, {task("dueDate", Date(TimeInterval(100))), task("removed", false)});
        EXPECT_FALSE(save.commit());
    }
    EXPECT_EQ(
        rows("SELECT Z_PK, Z_ENT, Z_OPT, ZNAME, ZLIST, ZDUEDATE, typeof(ZDUEDATE), ZREMOVED FROM ZGTASK "
             "WHERE Z_PK > 3"),
        "4|2|1|NULL|NULL|100|integer|0\n5|2|1|Tea|2|NULL|null|NULL");
    EXPECT_EQ(rows("SELECT * FROM Z_PRIMARYKEY"), "1|GList|0|3\n2|GTask|0|5\n3|GUser|0|1");
}

TEST_F(SaveTest, TakesNumbersThatNobodyHas) {
    struct Row {
        const char* what;
        const char* counter;
        std::int64_t expected;
    };
    const Row rows[] = {
        {"rows above the counter, left by a tool", "SET Z_MAX = 1",                   4 },
        {"the last rows deleted",                  "SET Z_MAX = 90",                  91},
        {"no counter",                             "SET Z_MAX = NULL",                4 },
        {"all numbers used",                       "SET Z_MAX = 9223372036854775806", 0 },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        PlainDatabase(file).execute("UPDATE Z_PRIMARYKEY " + std::string(row.counter) +
                                    " WHERE Z_NAME = 'GTask'");
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.takeKeys(taskEntity(), 2), row.expected);
        EXPECT_EQ(save.failed(), row.expected == 0);
    }
}

TEST_F(SaveTest, WritesOnlyTheNamedColumnsAndRaisesTheVersion) {
    PlainDatabase(file).execute("UPDATE ZGTASK SET ZPRIORITY = 'high', ZLASTMODIFIED = 1e30 WHERE Z_PK = 3");
    {
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.version(taskEntity(), 3), 2);
        EXPECT_EQ(save.updateRow(taskEntity(), 3, 2, {task("name", u"Essay"), task("dueDate", Value())}), 3);
        EXPECT_EQ(save.updateRow(taskEntity(), 3, 3, {task("completed", true)}), 4);
        EXPECT_EQ(save.updateRow(taskEntity(), 2, 3, {}), 4);
        EXPECT_FALSE(save.commit());
    }
    EXPECT_EQ(rows("SELECT Z_OPT, ZNAME, ZDUEDATE, ZCOMPLETED, ZPRIORITY, ZLASTMODIFIED, ZNOTES, ZLIST FROM "
                   "ZGTASK WHERE Z_PK = 3"),
              "4|Essay|NULL|1|high|1.0e+30|NULL|2");
    EXPECT_EQ(rows("SELECT Z_OPT FROM ZGTASK WHERE Z_PK = 2"), "4");
}

TEST_F(SaveTest, MeetsEveryVersionThatMayStandInARow) {
    struct Row {
        const char* stored;
        std::int64_t read;
        const char* written;
    };
    const Row kRows[] = {
        {"NULL",                0,                                        "1" },
        {"0",                   0,                                        "1" },
        {"7",                   7,                                        "8" },
        {"'odd'",               0,                                        "1" },
        {"-3",                  -3,                                       "-2"},
        {"2.5",                 2,                                        "3" },
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max(), "1" },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.stored);
        PlainDatabase(file).execute(std::string("UPDATE ZGTASK SET Z_OPT = ") + row.stored);
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        EXPECT_EQ(save.version(taskEntity(), 1), row.read);
        EXPECT_FALSE(save.updateRow(taskEntity(), 1, 99, {task("name", u"no")}));
        EXPECT_TRUE(save.updateRow(taskEntity(), 1, row.read, {task("name", u"yes")}));
        EXPECT_FALSE(save.deleteRow(taskEntity(), 2, 99));
        EXPECT_TRUE(save.deleteRow(taskEntity(), 2, row.read));
        EXPECT_FALSE(save.commit());
        EXPECT_EQ(rows("SELECT Z_PK, Z_OPT FROM ZGTASK WHERE ZNAME = 'yes'"),
                  std::string("1|") + row.written);
        PlainDatabase(file).execute("INSERT INTO ZGTASK (Z_PK) VALUES (2)");
    }
}

TEST_F(SaveTest, TellsARowThatIsGoneOrHasChanged) {
    const auto store = openedStore(file);
    SaveTransaction save(*store);
    EXPECT_FALSE(save.version(taskEntity(), 77));
    EXPECT_FALSE(save.updateRow(taskEntity(), 77, 0, {task("name", u"x")}));
    EXPECT_FALSE(save.deleteRow(taskEntity(), 77, 0));
    EXPECT_FALSE(save.updateRow(taskEntity(), 2, 2, {task("name", u"x")}));
    EXPECT_FALSE(save.failed()) << "not an error: the caller reads the row and merges";
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(rows("SELECT group_concat(ZNAME) FROM ZGTASK"), "Milk,Bread,Report");
}

TEST_F(SaveTest, UnhooksTheRowsThatPointAtADeletedOne) {
    PlainDatabase(file).execute("UPDATE ZGTASK SET Z_OPT = NULL WHERE Z_PK = 2");
    {
        const auto store = openedStore(file);
        SaveTransaction save(*store);
        const PropertyIndex toList = propertyOf(taskEntity(), "list");
        EXPECT_THAT(save.referencingKeys(taskEntity(), toList, 1), testing::ElementsAre(1, 2));
        EXPECT_THAT(save.referencingKeys(taskEntity(), toList, 9), testing::IsEmpty());
        EXPECT_TRUE(save.deleteRow(listEntity(), 1, 1));
        save.nullifyReferences(taskEntity(), toList, 1);
        EXPECT_FALSE(save.commit());
    }
    EXPECT_EQ(rows("SELECT Z_PK, Z_OPT, ZLIST FROM ZGTASK"), "1|2|NULL\n2|1|NULL\n3|2|2");
    EXPECT_EQ(rows("SELECT Z_MAX FROM Z_PRIMARYKEY WHERE Z_NAME = 'GList'"), "2") << "never falls";
}

TEST_F(SaveTest, IsAllOrNothing) {
    const std::string before = rows("SELECT * FROM ZGTASK") + rows("SELECT * FROM Z_PRIMARYKEY");
    const auto store = openedStore(file);
    const auto change = [&](SaveTransaction& save) {
        save.takeKeys(taskEntity(), 5);
        save.insertRow(taskEntity(), 4, {task("name", u"Tea")});
        save.deleteRow(taskEntity(), 1, 1);
    };
    {
        SaveTransaction abandoned(*store);
        change(abandoned);
    }
    EXPECT_EQ(rows("SELECT * FROM ZGTASK") + rows("SELECT * FROM Z_PRIMARYKEY"), before);

    SaveTransaction failing(*store);
    change(failing);
    failing.insertRow(taskEntity(), 4, {task("name", u"a second row 4")});
    EXPECT_TRUE(failing.failed());
    failing.insertRow(taskEntity(), 5, {task("name", u"too late")});
    const auto error = failing.commit();
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message, HasSubstr("UNIQUE constraint failed: ZGTASK.Z_PK"));
    EXPECT_EQ(rows("SELECT * FROM ZGTASK") + rows("SELECT * FROM Z_PRIMARYKEY"), before);
}

// Stores of newer and older applications

TEST_F(SaveTest, KeepsEverythingThatItDoesNotKnow) {
    const fs::path newer = directory.path() / "newer.sqlite";
    writePlatformStore(newer, {.model = Model::kNewer, .hasDerivedAttributes = true});
    const std::string before = unownedContent(newer);
    {
        const TestEnvironment environment({.now = "2001-01-02 00:00"});
        const auto store = openedStore(newer);
        SaveTransaction save(*store);
        save.insertRow(taskEntity(), save.takeKeys(taskEntity(), 1), {task("name", u"Tea")});
        save.updateRow(taskEntity(), 1, 1, {task("name", u"Oat milk")});
        save.deleteRow(taskEntity(), 2, 3);
        save.updateRow(listEntity(), 2, 4, {list("name", u"Office")});
        save.insertRow(listEntity(), save.takeKeys(listEntity(), 1), {list("name", u"Garden")});
        save.updateRow(userEntity(), 1, 1,
                       {
                           {propertyOf(userEntity(), "name"), u"I"}
        });
        ASSERT_FALSE(save.commit());
    }
    EXPECT_EQ(unownedContent(newer), before);
    PlainDatabase written(newer);
    EXPECT_EQ(written.rows("SELECT Z_PK, Z_ENT, Z_OPT, ZNAME, ZESTIMATE, ZASSIGNEE FROM ZGTASK"),
              "1|3|2|Oat milk|0.25|Ann\n3|3|2|Report|0.25|Ann\n4|3|1|Tea|NULL|NULL");
    EXPECT_EQ(written.rows("SELECT Z_PK, Z_OPT, ZNAME, ZSYMBOL, ZCHANGEDON FROM ZGLIST"),
              "1|1|Home|00FF10|NULL\n2|5|Office|00FF10|86400\n3|1|Garden|NULL|86400");
    EXPECT_EQ(written.rows("SELECT * FROM Z_PRIMARYKEY"),
              "1|GList|0|3\n2|GNote|0|1\n3|GTask|0|4\n4|GUser|0|1");
    EXPECT_EQ(written.rows("PRAGMA integrity_check"), "ok");
}

TEST_F(SaveTest, RefusesToWritePastATriggerThatItCannotRun) {
    PlainDatabase(file).execute(
        "CREATE TRIGGER Z_DA_new AFTER UPDATE OF Z_OPT ON ZGTASK BEGIN SELECT NSCoreDataSomethingNew(1); "
        "END");
    const std::string before = unownedContent(file) + rows("SELECT * FROM ZGTASK");
    const auto store = openedStore(file);
    SaveTransaction save(*store);
    save.updateRow(taskEntity(), 1, 1, {task("name", u"x")});
    const auto error = save.commit();
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message, HasSubstr("no such function: NSCoreDataSomethingNew"));
    EXPECT_EQ(unownedContent(file) + rows("SELECT * FROM ZGTASK"), before);
}

struct OlderStoreTest : SaveTest {
    void SetUp() override { writePlatformStore(file, {.model = Model::kOlder}); }
    std::string columns(const char* table) {
        return rows(
            std::string("SELECT group_concat(name || ' ' || type) FROM (SELECT * FROM pragma_table_info('") +
            table + "') WHERE name IN ('ZISISOLATED', 'ZCOLOR', 'ZUSER', 'ZREGIONLAT', 'ZNOTES'))");
    }
};

TEST_F(OlderStoreTest, KeepsItsSchemaWhileDefaultsAreSaved) {
    const std::string before = unownedContent(file);
    const auto store = openedStore(file);
    SaveTransaction save(*store);
    save.insertRow(listEntity(), save.takeKeys(listEntity(), 1),
                   {list("name", u"Garden"), list("isIsolated", false), list("user", Value())});
    save.updateRow(taskEntity(), 1, 1,
                   {task("regionLat", 0.0), task("name", u"Oat milk"), task("notes", Value())});
    save.nullifyReferences(listEntity(), propertyOf(listEntity(), "user"), 1);
    EXPECT_THAT(save.referencingKeys(listEntity(), propertyOf(listEntity(), "user"), 1), testing::IsEmpty());
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(unownedContent(file), before);
    EXPECT_EQ(rows("SELECT Z_OPT, ZNAME FROM ZGTASK WHERE Z_PK = 1"), "2|Oat milk");
}

TEST_F(OlderStoreTest, GetsAColumnWhenAValueNeedsIt) {
    const auto store = openedStore(file);
    {
        SaveTransaction save(*store);
        save.updateRow(listEntity(), 2, 4, {list("isIsolated", true)});
        save.insertRow(listEntity(), 3, {list("user", std::int64_t{1}), list("color", Bytes{1, 2})});
        save.insertRow(listEntity(), 4, {list("user", std::int64_t{1})});
        save.updateRow(taskEntity(), 1, 1, {task("notes", u"now"), task("regionLat", 52.5)});
        EXPECT_FALSE(save.commit());
    }
    EXPECT_EQ(columns("ZGLIST"), "ZISISOLATED INTEGER,ZUSER INTEGER,ZCOLOR BLOB");
    EXPECT_EQ(columns("ZGTASK"), "ZNOTES VARCHAR,ZREGIONLAT FLOAT");
    // Rows that were there had read as 0, and still do to a query.
    EXPECT_EQ(rows("SELECT Z_PK, Z_OPT, ZISISOLATED, ZUSER, ZCOLOR FROM ZGLIST"),
              "1|1|0|NULL|NULL\n2|5|1|NULL|NULL\n3|1|NULL|1|0102\n4|1|NULL|1|NULL");
    EXPECT_EQ(rows("SELECT Z_PK, ZREGIONLAT, ZNOTES FROM ZGTASK"), "1|52.5|now\n2|0.0|NULL\n3|0.0|NULL");
    EXPECT_TRUE(store->hasColumn(listEntity(), propertyOf(listEntity(), "isIsolated")));
}

TEST_F(OlderStoreTest, LosesTheColumnAgainWithAFailedSave) {
    const std::string before = unownedContent(file);
    const auto store = openedStore(file);
    const PropertyIndex isolated = propertyOf(listEntity(), "isIsolated");
    {
        SaveTransaction save(*store);
        save.updateRow(listEntity(), 1, 1, {list("isIsolated", true)});
        ASSERT_FALSE(save.failed());
    }
    EXPECT_EQ(unownedContent(file), before);
    EXPECT_FALSE(store->hasColumn(listEntity(), isolated));
    // Another program's column brings the schema to the very number that ours had.
    PlainDatabase(file).execute("ALTER TABLE ZGTASK ADD COLUMN ZOTHER INTEGER");
    EXPECT_GT(store->dataVersion(), 0);
    EXPECT_THAT(store->selectList(listEntity()).text, testing::Not(HasSubstr("ZISISOLATED")));
    SaveTransaction save(*store);
    save.updateRow(listEntity(), 1, 1, {list("isIsolated", true)});
    EXPECT_FALSE(save.commit());
    EXPECT_EQ(rows("SELECT ZISISOLATED FROM ZGLIST"), "1\n0");
}

TEST_F(SaveTest, LeavesAStoreWithHistoryToItsApplication) {
    PlainDatabase application(file);
    const auto store = openedStore(file);
    EXPECT_FALSE(store->isReadOnly());
    const fs::path other = directory.path() / "history.sqlite";
    writePlatformStore(other, {.hasHistory = true});
    EXPECT_TRUE(openedStore(other)->isReadOnly());

    application.execute("CREATE TABLE ATRANSACTION (Z_PK INTEGER PRIMARY KEY)");
    SaveTransaction save(*store);
    const auto error = save.commit();
    ASSERT_TRUE(error) << "the history was turned on while the store was open";
    EXPECT_EQ(error->kind, StoreError::Kind::kReadOnly);
    EXPECT_THAT(error->message, HasSubstr("history"));
}

// Other programs

TEST_F(SaveTest, WaitsForALockAndThenSaysThatItIsBusy) {
    const auto store = impatientStore(file);
    const auto rename = [&] {
        SaveTransaction save(*store);
        save.updateRow(taskEntity(), 1, 1, {task("name", u"Tea")});
        return save.commit();
    };
    {
        OtherProcess holder([&](const OtherProcess::Progress& progress) {
            PlainDatabase database(file);
            database.execute("BEGIN IMMEDIATE; UPDATE ZGTASK SET ZNAME = 'half'");
            progress();
            while (true) pause();
        });
        holder.waitForProgress();
        const auto error = rename();
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, StoreError::Kind::kBusy) << error->message;
    }
    EXPECT_FALSE(rename()) << "the lock died with its holder";
    EXPECT_EQ(rows("SELECT ZNAME FROM ZGTASK"), "Tea\nBread\nReport");
}

TEST_F(SaveTest, IsBusyWhileSomebodyReadsAStoreWithARollbackJournal) {
    const fs::path older = directory.path() / "journal.sqlite";
    writePlatformStore(older, {.usesRollbackJournal = true});
    const auto store = impatientStore(older);
    OtherProcess reader([&](const OtherProcess::Progress& progress) {
        PlainDatabase database(older);
        database.execute("BEGIN; SELECT * FROM ZGTASK");
        progress();
        while (true) pause();
    });
    reader.waitForProgress();
    SaveTransaction save(*store);
    EXPECT_TRUE(save.updateRow(taskEntity(), 1, 1, {task("name", u"Tea")}));
    const auto error = save.commit();
    ASSERT_TRUE(error) << "found out at the commit only";
    EXPECT_EQ(error->kind, StoreError::Kind::kBusy) << error->message;
    EXPECT_EQ(PlainDatabase(older).rows("SELECT ZNAME FROM ZGTASK WHERE Z_PK = 1"), "Milk");
}

}  // namespace
}  // namespace corvane
