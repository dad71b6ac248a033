#include "platform/store/StoreCreation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <regex>

#include "StoreTestFixture.h"
#include "support/OtherProcess.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

struct NewStore : StoreFileTest {};

TEST_F(NewStore, HasTheLayoutOfThePlatform) {
    const fs::path platform = directory.path() / "platform.sqlite";
    writePlatformStore(platform);
    const std::string uuid = openedStore(file)->uuid();

    const std::string schema =
        "SELECT sql FROM sqlite_master WHERE name NOT LIKE 'Z\\_GTask%' ESCAPE '\\' "
        "ORDER BY name";
    PlainDatabase made(file);
    EXPECT_EQ(made.rows(schema), PlainDatabase(platform).rows(schema));
    EXPECT_EQ(made.rows("SELECT sql FROM sqlite_master WHERE name LIKE 'Z\\_GTask%' ESCAPE '\\'"),
              "CREATE INDEX Z_GTask_openTasks ON ZGTASK (ZDUEDATE COLLATE BINARY ASC, ZLIST COLLATE BINARY "
              "ASC) WHERE ZCOMPLETED = 0");
    EXPECT_EQ(made.rows("SELECT * FROM Z_PRIMARYKEY"), "1|GList|0|0\n2|GTask|0|0\n3|GUser|0|0");
    EXPECT_EQ(made.rows("SELECT Z_VERSION, Z_UUID FROM Z_METADATA"), "1|" + uuid);
    // The name of our mark and a key of the platform, as they stand in the property list.
    EXPECT_EQ(made.rows("SELECT instr(Z_PLIST, CAST('CorvaneCreated' AS BLOB)) > 0, instr(Z_PLIST, "
                        "CAST('_NSAutoVacuumLevel' AS BLOB)) > 0 FROM Z_METADATA"),
              "1|1");
    EXPECT_TRUE(openedStore(file)->isOurs());
    EXPECT_EQ(made.rows("SELECT count(*) FROM Z_MODELCACHE"), "0");
    EXPECT_EQ(made.rows("SELECT * FROM pragma_auto_vacuum, pragma_page_size, pragma_journal_mode, "
                        "pragma_user_version, pragma_encoding, pragma_integrity_check"),
              "2|4096|wal|0|UTF-8|ok");
    EXPECT_TRUE(std::regex_match(
        uuid, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")));
}

TEST_F(NewStore, IsForItsOwnerOnlyWhateverTheMask) {
    for (const mode_t mask : {0U, 0777U}) {
        const fs::path made = directory.path() / (std::to_string(mask) + ".sqlite");
        const mode_t previous = umask(mask);
        { EXPECT_EQ(openedStore(made)->file(), made); }
        umask(previous);
        for (const char* suffix : {"", "-wal", "-shm"}) {
            const fs::path part = made.string() + suffix;
            EXPECT_EQ(fs::status(part).permissions(), fs::perms::owner_read | fs::perms::owner_write) << part;
        }
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 6) << "a draft was left";
}

TEST_F(NewStore, AppearsOnceForProcessesThatMakeItTogether) {
    constexpr int kRounds = 12;
    for (int round = 0; round < kRounds; ++round) {
        const fs::path made = directory.path() / (std::to_string(round) + ".sqlite");
        const auto open = [&](const OtherProcess::Progress& progress) {
            const std::unique_ptr<SqliteStore> store = openedStore(made);
            SaveTransaction save(*store);
            const std::int64_t key = save.takeKeys(userEntity(), 1);
            save.insertRow(userEntity(), key, {});
            if (auto error = save.commit()) throw std::runtime_error(error->message);
            progress();
        };
        OtherProcess makers[] = {OtherProcess(open), OtherProcess(open), OtherProcess(open)};
        for (OtherProcess& maker : makers) maker.waitForProgress();
        EXPECT_EQ(PlainDatabase(made).rows("SELECT count(*), max(Z_PK) FROM ZGUSER"), "3|3");
    }
}

TEST_F(NewStore, IsWholeOrAbsentAfterADeathOnTheWay) {
    std::string made;
    for (int round = 0; round < 8; ++round) {
        const TemporaryDirectory place;
        {
            OtherProcess maker([&](const OtherProcess::Progress& progress) {
                for (char name = 'a';; ++name) {
                    progress();
                    openedStore(place.path() / std::string(1, name));
                }
            });
            maker.waitForProgress(1 + round % 3);
        }
        for (const char* name : {"a", "b", "c"}) {
            made += fs::exists(place.path() / name) ? "+" : "-";
            EXPECT_TRUE(openedStore(place.path() / name)->isOurs());
        }
    }
    EXPECT_THAT(made, HasSubstr("-"));
}

}  // namespace
}  // namespace corvane
