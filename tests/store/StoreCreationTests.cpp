#include "platform/store/StoreCreation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <regex>

#include "StoreFileModel.h"
#include "platform/store/SaveTransaction.h"
#include "platform/store/SqliteStore.h"
#include "support/OtherProcess.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

struct NewStore : testing::Test {
    TemporaryDirectory directory;
    fs::path file = directory.path() / "Plorix.sqlite";
};

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
    EXPECT_EQ(made.rows("SELECT count(*) FROM Z_MODELCACHE"), "0");
    const std::pair<const char*, const char*> settings[] = {
        {"auto_vacuum",     "2"    },
        {"page_size",       "4096" },
        {"journal_mode",    "wal"  },
        {"user_version",    "0"    },
        {"encoding",        "UTF-8"},
        {"integrity_check", "ok"   },
    };
    for (const auto& [name, value] : settings) {
        EXPECT_EQ(made.rows(std::string("PRAGMA ") + name), value) << name;
    }
    EXPECT_TRUE(std::regex_match(
        uuid, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")));
}

TEST_F(NewStore, SaysThatItIsOursAndFitsEveryModel) {
    EXPECT_TRUE(openedStore(file)->isOurs());
    PlainDatabase made(file);
    const std::string digits = made.rows("SELECT Z_PLIST FROM Z_METADATA");
    Bytes data;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        data.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    const auto list = propertyListFromData(data);
    ASSERT_TRUE(list);
    std::string keys;
    for (const auto& [key, value] : *list->get<PropertyList::Dictionary>()) keys += key + " ";
    EXPECT_EQ(keys,
              "CorvaneCreated NSPersistenceFrameworkVersion NSPersistenceMaximumFrameworkVersion "
              "NSStoreModelVersionIdentifiers NSStoreType _NSAutoVacuumLevel ");
    EXPECT_EQ(*list->find("_NSAutoVacuumLevel")->get<std::string>(), "2");
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
        OtherProcess first(open), second(open), third(open);
        first.waitForProgress();
        second.waitForProgress();
        third.waitForProgress();
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
