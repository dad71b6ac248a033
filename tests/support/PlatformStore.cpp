#include "support/PlatformStore.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "platform/foundation/PropertyList.h"
#include "support/OtherProcess.h"

namespace corvane {
namespace {

using Model = PlatformStoreShape::Model;

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

std::string columnText(sqlite3_stmt* row, int column) {
    if (sqlite3_column_type(row, column) == SQLITE_NULL) return "NULL";
    if (sqlite3_column_type(row, column) != SQLITE_BLOB) {
        const void* text = sqlite3_column_text(row, column);
        return {static_cast<const char*>(text), static_cast<std::size_t>(sqlite3_column_bytes(row, column))};
    }
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto* bytes = static_cast<const unsigned char*>(sqlite3_column_blob(row, column));
    std::string digits;
    for (int i = 0; i < sqlite3_column_bytes(row, column); ++i) {
        digits += kDigits[bytes[i] >> 4];
        digits += kDigits[bytes[i] & 15];
    }
    return digits;
}

constexpr const char* kCurrentTables = R"(
CREATE TABLE ZGLIST ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZDISPLAYORDER INTEGER, ZHIDECOMPLETEDTASKS INTEGER, ZISDEFAULT INTEGER, ZISIMMUTABLE INTEGER, ZISISOLATED INTEGER, ZISREADONLY INTEGER, ZLASTMODIFIED INTEGER, ZPROPERTIES INTEGER, ZREMOVED INTEGER, ZUSER INTEGER, ZCREATEDTIMESTAMP TIMESTAMP, ZTASKSLASTMODIFIED TIMESTAMP, ZID VARCHAR, ZNAME VARCHAR, ZCOLOR BLOB );
CREATE TABLE ZGTASK ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZALERTENABLED INTEGER, ZALERTREPEAT INTEGER, ZALERTREPEATINTERVAL INTEGER, ZCOLLAPSED INTEGER, ZCOMPLETED INTEGER, ZDISPLAYORDER INTEGER, ZHASDUEDATE INTEGER, ZHASDUETIME INTEGER, ZHIDDEN INTEGER, ZLASTMODIFIED INTEGER, ZPRIORITY INTEGER, ZPROPERTIES INTEGER, ZREGIONALERT INTEGER, ZREMOVED INTEGER, ZLIST INTEGER, ZPARENTTASK INTEGER, ZALERTDATE TIMESTAMP, ZCOMPLETEDDATE TIMESTAMP, ZCREATEDTIMESTAMP TIMESTAMP, ZDUEDATE TIMESTAMP, ZREGIONACCURACY FLOAT, ZREGIONLAT FLOAT, ZREGIONLONG FLOAT, ZREGIONRADIUS FLOAT, ZALERTREPEATDATA VARCHAR, ZID VARCHAR, ZNAME VARCHAR, ZNOTES VARCHAR, ZREGIONDESCRIPTION VARCHAR );
CREATE TABLE ZGUSER ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZACCOUNTTYPE INTEGER, ZDISPLAYORDER INTEGER, ZISDEFAULT INTEGER, ZCREATEDTIMESTAMP TIMESTAMP, ZNAME VARCHAR, ZPASSWORD VARCHAR );
CREATE INDEX ZGLIST_ZUSER_INDEX ON ZGLIST (ZUSER);
)";

constexpr const char* kOlderTables = R"(
CREATE TABLE ZGLIST ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZDISPLAYORDER INTEGER, ZHIDECOMPLETEDTASKS INTEGER, ZISDEFAULT INTEGER, ZISIMMUTABLE INTEGER, ZISREADONLY INTEGER, ZLASTMODIFIED INTEGER, ZPROPERTIES INTEGER, ZREMOVED INTEGER, ZCREATEDTIMESTAMP TIMESTAMP, ZTASKSLASTMODIFIED TIMESTAMP, ZID VARCHAR, ZNAME VARCHAR );
CREATE TABLE ZGTASK ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZALERTENABLED INTEGER, ZALERTREPEAT INTEGER, ZALERTREPEATINTERVAL INTEGER, ZCOLLAPSED INTEGER, ZCOMPLETED INTEGER, ZDISPLAYORDER INTEGER, ZHASDUEDATE INTEGER, ZHASDUETIME INTEGER, ZHIDDEN INTEGER, ZLASTMODIFIED INTEGER, ZPRIORITY INTEGER, ZPROPERTIES INTEGER, ZREGIONALERT INTEGER, ZREMOVED INTEGER, ZLIST INTEGER, ZPARENTTASK INTEGER, ZALERTDATE TIMESTAMP, ZCOMPLETEDDATE TIMESTAMP, ZCREATEDTIMESTAMP TIMESTAMP, ZDUEDATE TIMESTAMP, ZREGIONACCURACY FLOAT, ZREGIONLONG FLOAT, ZREGIONRADIUS FLOAT, ZALERTREPEATDATA VARCHAR, ZID VARCHAR, ZNAME VARCHAR, ZREGIONDESCRIPTION VARCHAR );
CREATE TABLE ZGUSER ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZACCOUNTTYPE INTEGER, ZDISPLAYORDER INTEGER, ZISDEFAULT INTEGER, ZCREATEDTIMESTAMP TIMESTAMP, ZNAME VARCHAR, ZPASSWORD VARCHAR );
)";

constexpr const char* kPlatformTables = R"(
CREATE INDEX ZGTASK_ZLIST_INDEX ON ZGTASK (ZLIST);
CREATE INDEX ZGTASK_ZPARENTTASK_INDEX ON ZGTASK (ZPARENTTASK);
CREATE TABLE Z_PRIMARYKEY (Z_ENT INTEGER PRIMARY KEY, Z_NAME VARCHAR, Z_SUPER INTEGER, Z_MAX INTEGER);
CREATE TABLE Z_METADATA (Z_VERSION INTEGER PRIMARY KEY, Z_UUID VARCHAR(255), Z_PLIST BLOB);
CREATE TABLE Z_MODELCACHE (Z_CONTENT BLOB);
INSERT INTO Z_MODELCACHE VALUES (x'4BCACC2B2E494C4F0500');
)";

constexpr const char* kNewerExtras = R"(
CREATE TABLE ZGNOTE ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZTASK INTEGER, ZBODY VARCHAR );
CREATE INDEX ZGNOTE_ZTASK_INDEX ON ZGNOTE (ZTASK);
CREATE TABLE Z_2TAGGEDTASKS ( Z_2NOTES INTEGER, Z_3TAGGEDTASKS INTEGER, Z_FOK_3TAGGEDTASKS INTEGER, PRIMARY KEY (Z_2NOTES, Z_3TAGGEDTASKS) );
ALTER TABLE ZGTASK ADD COLUMN ZESTIMATE FLOAT;
ALTER TABLE ZGTASK ADD COLUMN ZASSIGNEE VARCHAR;
ALTER TABLE ZGLIST ADD COLUMN ZSYMBOL BLOB;
CREATE INDEX Z_GTask_byDueDate ON ZGTASK (ZDUEDATE COLLATE BINARY ASC);
INSERT INTO Z_PRIMARYKEY VALUES (2, 'GNote', 0, 1);
INSERT INTO ZGNOTE VALUES (1, 2, 1, 1, 'with lactose');
INSERT INTO Z_2TAGGEDTASKS VALUES (1, 1, 1024);
)";

constexpr const char* kNewerValues = R"(
UPDATE ZGTASK SET ZESTIMATE = 0.25, ZASSIGNEE = 'Ann';
UPDATE ZGLIST SET ZSYMBOL = x'00FF10';
)";

constexpr const char* kDerivedAttributes = R"(
ALTER TABLE ZGLIST ADD COLUMN ZCHANGEDON TIMESTAMP;
CREATE TRIGGER "Z_DA_ZGLIST_GList_changedOn_INSERT" AFTER INSERT ON ZGLIST FOR EACH ROW BEGIN UPDATE ZGLIST SET ZCHANGEDON = NSCoreDataNow() WHERE Z_PK = NEW.Z_PK; SELECT NSCoreDataDATriggerInsertUpdatedAffectedObjectValue('ZGLIST', NEW.Z_ENT, NEW.Z_PK, 'changedOn', NEW.ZCHANGEDON); END;
CREATE TRIGGER "Z_DA_ZGLIST_GList_changedOn_UPDATE" AFTER UPDATE OF Z_OPT ON ZGLIST FOR EACH ROW BEGIN UPDATE ZGLIST SET ZCHANGEDON = NSCoreDataNow() WHERE Z_PK = NEW.Z_PK; SELECT NSCoreDataDATriggerUpdatedAffectedObjectValue('ZGLIST', NEW.Z_ENT, NEW.Z_PK, 'changedOn', NEW.ZCHANGEDON); END;
)";

constexpr const char* kHistory = R"(
CREATE TABLE ACHANGE ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZCHANGETYPE INTEGER, ZENTITY INTEGER, ZENTITYPK INTEGER, ZTRANSACTIONID INTEGER, ZCOLUMNS BLOB );
CREATE TABLE ATRANSACTION ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZAUTHORTS INTEGER, ZBUNDLEIDTS INTEGER, ZCONTEXTNAMETS INTEGER, ZPROCESSIDTS INTEGER, ZTIMESTAMP FLOAT, ZAUTHOR VARCHAR, ZBUNDLEID VARCHAR, ZCONTEXTNAME VARCHAR, ZPROCESSID VARCHAR, ZQUERYGEN BLOB );
CREATE TABLE ATRANSACTIONSTRING ( Z_PK INTEGER PRIMARY KEY, Z_ENT INTEGER, Z_OPT INTEGER, ZNAME VARCHAR );
CREATE INDEX ACHANGE_ZTRANSACTIONID_INDEX ON ACHANGE (ZTRANSACTIONID);
CREATE UNIQUE INDEX Z_TRANSACTIONSTRING_UNIQUE_NAME ON ATRANSACTIONSTRING (ZNAME COLLATE BINARY ASC);
INSERT INTO Z_PRIMARYKEY VALUES (16001, 'CHANGE', 0, 1), (16002, 'TRANSACTION', 0, 1), (16003, 'TRANSACTIONSTRING', 0, 1);
INSERT INTO ACHANGE VALUES (1, 16001, NULL, 0, 2, 1, 1, NULL);
INSERT INTO ATRANSACTION (Z_PK, Z_ENT, ZBUNDLEIDTS, ZTIMESTAMP) VALUES (1, 16002, 1, 731332800.5);
INSERT INTO ATRANSACTIONSTRING VALUES (1, 16003, NULL, 'com.velmor.plorix');
)";

std::string ownRows(Model model) {
    const std::string task = model == Model::kNewer ? "3" : "2";
    const std::string user = model == Model::kNewer ? "4" : "3";
    std::string sql = "INSERT INTO Z_PRIMARYKEY VALUES (1, 'GList', 0, 2), (" + task + ", 'GTask', 0, 3), (" +
                      user + ", 'GUser', 0, 1);";
    sql += "INSERT INTO ZGUSER VALUES (1, " + user + ", 1, 0, 0, 1, 725846400, 'Me', '');";
    sql +=
        "INSERT INTO ZGLIST (Z_PK, Z_ENT, Z_OPT, ZDISPLAYORDER, ZISDEFAULT, ZREMOVED, ZNAME) VALUES "
        "(1, 1, 1, 0, 1, 0, 'Home'), (2, 1, 4, 1, 0, 0, 'Work');";
    if (model != Model::kOlder) sql += "UPDATE ZGLIST SET ZUSER = 1;";
    sql +=
        "INSERT INTO ZGTASK (Z_PK, Z_ENT, Z_OPT, ZCOMPLETED, ZREMOVED, ZHASDUEDATE, ZDISPLAYORDER, ZLIST, "
        "ZDUEDATE, ZNAME) VALUES "
        "(1, " +
        task +
        ", 1, 0, 0, 1, 0, 1, 731332800, 'Milk'), "
        "(2, " +
        task +
        ", 3, 1, 0, 0, 1, 1, NULL, 'Bread'), "
        "(3, " +
        task + ", 2, 0, 0, 1, 0, 2, 731376000.5, 'Report');";
    return sql;
}

Bytes metadataProperties() {
    const PropertyList hash{Bytes(32, 0xA7)};
    PropertyList::Dictionary properties;
    properties["NSStoreType"].value = std::string("SQLite");
    properties["NSPersistenceFrameworkVersion"].value = std::int64_t{1348};
    properties["NSPersistenceMaximumFrameworkVersion"].value = std::int64_t{1348};
    properties["NSStoreModelVersionHashes"].value = PropertyList::Dictionary{
        {"GList", hash},
        {"GTask", hash},
        {"GUser", hash}
    };
    properties["NSStoreModelVersionHashesDigest"].value = std::string(88, 'q');
    properties["NSStoreModelVersionHashesVersion"].value = std::int64_t{3};
    properties["NSStoreModelVersionIdentifiers"].value = PropertyList::Array{{std::string()}};
    properties["_NSAutoVacuumLevel"].value = std::string("2");
    properties["SyncAnchor"].value = std::string("f81d4fae");
    return binaryDataFromPropertyList({properties});
}

void writeMetadata(PlainDatabase& database) {
    sqlite3_stmt* handle = nullptr;
    sqlite3_prepare_v2(database.handle(), "INSERT INTO Z_METADATA VALUES (1, ?, ?)", -1, &handle, nullptr);
    const Statement statement(handle);
    const Bytes properties = metadataProperties();
    sqlite3_bind_text(handle, 1, kPlatformStoreUuid, -1, SQLITE_STATIC);
    sqlite3_bind_blob64(handle, 2, properties.data(), properties.size(), SQLITE_STATIC);
    if (sqlite3_step(handle) != SQLITE_DONE) throw std::runtime_error("no metadata");
}

}  // namespace

PlainDatabase::PlainDatabase(const std::filesystem::path& file, Closing closing) {
    if (sqlite3_open(file.c_str(), &database_) != SQLITE_OK) throw std::runtime_error("not opened");
    sqlite3_busy_timeout(database_, 5000);
    const int keepsLog = closing == Closing::kLikePlatform ? 1 : 0;
    sqlite3_db_config(database_, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keepsLog, nullptr);
    execute("PRAGMA synchronous=OFF");  // processes die in tests, machines do not
}

PlainDatabase::~PlainDatabase() { sqlite3_close(database_); }

void PlainDatabase::execute(const std::string& sql) {
    if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return;
    throw std::runtime_error(sqlite3_errmsg(database_));
}

std::string PlainDatabase::rows(const std::string& sql) {
    sqlite3_stmt* handle = nullptr;
    if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &handle, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(database_));
    }
    const Statement statement(handle);
    std::string rows;
    int code = SQLITE_OK;
    while ((code = sqlite3_step(handle)) == SQLITE_ROW) {
        if (!rows.empty()) rows += '\n';
        for (int i = 0; i < sqlite3_column_count(handle); ++i) {
            rows += (i == 0 ? "" : "|") + columnText(handle, i);
        }
    }
    if (code != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_));
    return rows;
}

std::int64_t PlainDatabase::integer(const std::string& sql) { return std::stoll(rows(sql)); }

void writePlatformStore(const std::filesystem::path& file, const PlatformStoreShape& shape) {
    PlainDatabase database(file);
    database.execute("PRAGMA page_size=4096; PRAGMA auto_vacuum=2; PRAGMA recursive_triggers=1;");
    if (!shape.usesRollbackJournal) database.execute("PRAGMA journal_mode=WAL;");
    database.execute("BEGIN");
    database.execute(shape.model == Model::kOlder ? kOlderTables : kCurrentTables);
    database.execute(kPlatformTables);
    writeMetadata(database);
    if (shape.model == Model::kNewer) database.execute(kNewerExtras);
    database.execute(ownRows(shape.model));
    if (shape.model == Model::kNewer) database.execute(kNewerValues);
    if (shape.hasDerivedAttributes) database.execute(kDerivedAttributes);
    if (shape.hasHistory) database.execute(kHistory);
    database.execute("COMMIT");
    if (!shape.usesRollbackJournal) database.execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

void commitAndDie(const std::filesystem::path& file, const std::string& sql) {
    runInDyingProcess([&] {
        auto database = std::make_unique<PlainDatabase>(file);
        database->execute("PRAGMA wal_autocheckpoint=0; BEGIN;" + sql + "; COMMIT");
        static_cast<void>(database.release());  // stays open until death
    });
}

std::string unownedContent(const std::filesystem::path& file) {
    PlainDatabase database(file);
    std::string content = database.rows("SELECT type, name, tbl_name, sql FROM sqlite_master ORDER BY name");
    constexpr const char* kOwnTables = "'ZGUSER', 'ZGLIST', 'ZGTASK', 'Z_PRIMARYKEY'";
    const std::string tables = database.rows(
        std::string("SELECT group_concat(name) FROM sqlite_master WHERE type = 'table' AND name NOT IN (") +
        kOwnTables + ")");
    for (std::size_t start = 0; start < tables.size();) {
        const std::size_t end = std::min(tables.find(',', start), tables.size());
        const std::string table = tables.substr(start, end - start);
        content += "\n" + table + ":\n" + database.rows("SELECT * FROM \"" + table + "\" ORDER BY rowid");
        start = end + 1;
    }
    content +=
        "\n" + database.rows("SELECT * FROM Z_PRIMARYKEY WHERE Z_NAME NOT IN ('GUser', 'GList', 'GTask')");
    return content + "\n" + database.rows("PRAGMA auto_vacuum") + database.rows("PRAGMA journal_mode");
}

}  // namespace corvane
