#include "platform/foundation/Environment.h"

#include <utility>

#include "platform/foundation/UserDirectories.h"

namespace corvane {

Environment& Environment::current() {
    static Environment environment;
    return environment;
}

bool Environment::useContainerDirectory(const std::filesystem::path& directory, MissingDirectory missing) {
    containerDirectory.reset();
    userDefaults = std::make_shared<UserDefaults>(std::filesystem::path());
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(directory, error);
    if (error) return false;
    const bool isLeft = missing == MissingDirectory::kLeave && !std::filesystem::exists(absolute, error);
    if (!isLeft && !makePrivateDirectories(absolute)) return false;
    containerDirectory = absolute;
    const std::string preferences = std::string(kAppGroupIdentifier) + ".plist";
    userDefaults = std::make_shared<UserDefaults>(absolute / "Library" / "Preferences" / preferences);
    return true;
}

std::filesystem::path Environment::defaultContainerDirectory() {
    if (const std::optional<std::string> named = processVariable("CORVANE_CONTAINER")) return *named;
    return userDataDirectory() / kAppGroupIdentifier;
}

std::filesystem::path Environment::defaultDocumentsDirectory() { return userDocumentsDirectory(); }

Date now() { return Environment::current().now(); }

EnvironmentScope::EnvironmentScope(Environment environment)
    : previous_(std::exchange(Environment::current(), std::move(environment))) {}

EnvironmentScope::~EnvironmentScope() { Environment::current() = std::move(previous_); }

}  // namespace corvane
