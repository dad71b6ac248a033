#include "platform/store/StoreMetadata.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <random>

#include "platform/store/SqliteDatabase.h"

namespace corvane {

namespace {

constexpr const char* kCreatedKey = "CorvaneCreated";

// The build of the framework that a new store names. It only has to be one that reads this layout.
constexpr std::int64_t kFrameworkVersion = 977;

bool isMarkedAsOurs(std::span<const std::uint8_t> data) {
    const std::optional<PropertyList> list = propertyListFromData(data);
    const PropertyList* mark = list ? list->find(kCreatedKey) : nullptr;
    const bool* isSet = mark ? mark->get<bool>() : nullptr;
    return isSet && *isSet;
}

}  // namespace

std::optional<StoreMetadata> readStoreMetadata(SqliteDatabase& database) {
    auto prepared = database.prepare("SELECT Z_UUID, Z_PLIST FROM Z_METADATA ORDER BY Z_VERSION LIMIT 1");
    auto* statement = std::get_if<SqliteStatement>(&prepared);
    if (!statement) return std::nullopt;
    const SqliteStatement::Step step = statement->step();
    if (step == SqliteStatement::Step::kError) return std::nullopt;
    if (step == SqliteStatement::Step::kDone) return StoreMetadata{};
    return StoreMetadata{std::string(statement->utf8(0)), isMarkedAsOurs(statement->bytes(1))};
}

Bytes propertiesOfNewStore() {
    PropertyList::Dictionary properties;
    properties["NSStoreType"].value = std::string("SQLite");
    properties["NSPersistenceFrameworkVersion"].value = kFrameworkVersion;
    properties["NSPersistenceMaximumFrameworkVersion"].value = kFrameworkVersion;
    properties["NSStoreModelVersionIdentifiers"].value = PropertyList::Array{{std::string()}};
    properties["_NSAutoVacuumLevel"].value = std::string("2");
    properties[kCreatedKey].value = true;
    return binaryDataFromPropertyList(PropertyList{std::move(properties)});
}

std::string newStoreUuid() {
    std::random_device random;
    std::array<std::uint32_t, 4> words{};
    for (std::uint32_t& word : words) word = random();
    char text[37];
    std::snprintf(text, sizeof text, "%08X-%04X-4%03X-%04X-%04X%08X", words[0], words[1] >> 16,
                  words[1] & 0xfff, 0x8000 | ((words[2] >> 16) & 0x3fff), words[2] & 0xffff, words[3]);
    return text;
}

}  // namespace corvane
