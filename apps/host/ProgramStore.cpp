#include "apps/host/ProgramStore.h"

#include <filesystem>
#include <system_error>

#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

void launch(GSData& data, bool createsMissingStore) {
    for (PersistentStoreDescription& description : data.persistentStoreDescriptions()) {
        description.createsMissingStore = createsMissingStore;
    }
    data.launch();
}

}  // namespace

void launchForShowing(GSData& data) {
    constexpr bool kCreatesMissingStore = false;
    launch(data, kCreatesMissingStore);
}

void launchForChanging(GSData& data) {
    constexpr bool kCreatesMissingStore = true;
    Environment& environment = Environment::current();
    if (const auto directory = environment.containerDirectory) environment.useContainerDirectory(*directory);
    if (data.loadError()) data.setLaunched(false);
    launch(data, kCreatesMissingStore);
}

bool isStoreMissing(const GSData& data) {
    const std::optional<std::filesystem::path> directory = data.documentsDirectory();
    if (!data.loadError() || !directory) return false;
    std::error_code error;
    const auto status = std::filesystem::symlink_status(*directory / kStoreFileName, error);
    return status.type() == std::filesystem::file_type::not_found;
}

std::optional<std::string> storeProblem(const GSData& data) {
    if (!data.loadError()) return std::nullopt;
    const std::optional<std::filesystem::path> directory = data.documentsDirectory();
    if (!directory) return localizedUtf8("there is no container folder, and none can be made");
    if (!isStoreMissing(data)) return data.loadError()->message;
    return localizedUtf8("there is no task store in %@ yet; begin with: corvane task add \"My first task\"",
                         {textFromUtf8(directory->string())});
}

}  // namespace corvane
