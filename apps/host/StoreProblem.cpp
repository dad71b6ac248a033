#include "apps/host/StoreProblem.h"

#include <filesystem>
#include <system_error>

namespace corvane {

std::optional<std::string> storeProblem(const GSData& data) {
    if (!data.loadError()) return std::nullopt;
    const std::optional<std::filesystem::path> directory = data.documentsDirectory();
    if (!directory) return "there is no container folder, and none can be made";
    std::error_code error;
    const auto status = std::filesystem::symlink_status(*directory / kStoreFileName, error);
    if (status.type() != std::filesystem::file_type::not_found) return data.loadError()->message;
    return "there is no task store in " + directory->string() +
           " yet; begin with: corvane task add \"My first task\"";
}

}  // namespace corvane
