// Everything that a program reads from its surroundings, in one place that tests replace for a scope.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/Date.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/views/Device.h"

namespace corvane {

/// Translates a key; `count` chooses the plural form where there is one. None: no translation.
using Translator =
    std::function<std::optional<std::string>(const char* key, std::optional<std::int64_t> count)>;

struct Environment {
    std::function<Date()> now = &ReferenceClock::now;
    std::string timeZone;  ///< IANA name; empty: the system's, changes noticed
    std::string locale;    ///< "de_DE"; empty: the process's settings, changes noticed
    Translator translate;  ///< empty: gettext
    std::optional<std::filesystem::path> containerDirectory;  ///< none: the app group cannot be had
    std::filesystem::path documentsDirectory;
    std::shared_ptr<MainQueue> mainQueue = std::make_shared<MainQueue>();
    std::shared_ptr<UserDefaults> userDefaults = std::make_shared<UserDefaults>(std::filesystem::path());
    Device device;
    Screen screen;

    /// The environment in force.
    static Environment& current();

    /// What becomes of a container directory that is not there: a program that only shows leaves no trace.
    enum class MissingDirectory { kMake, kLeave };

    /// Puts the container in force and takes its user defaults. A missing directory is made (0700), or left
    /// to whoever writes into it first.
    /// @return false when it cannot be made or is no directory; there is then no container
    bool useContainerDirectory(const std::filesystem::path& directory,
                               MissingDirectory missing = MissingDirectory::kMake);

    /// $CORVANE_CONTAINER, else ${XDG_DATA_HOME:-~/.local/share}/group.com.velmor.orin; relative values of
    /// XDG_DATA_HOME are ignored, as the XDG base directories ask.
    static std::filesystem::path defaultContainerDirectory();
    /// The user-domain Documents directory of XDG.
    static std::filesystem::path defaultDocumentsDirectory();
};

inline constexpr const char* kAppGroupIdentifier = "group.com.velmor.orin";

/// The current date: the environment's clock.
Date now();

/// Replaces the environment until the end of the scope.
class EnvironmentScope {
  public:
    explicit EnvironmentScope(Environment environment);
    ~EnvironmentScope();
    EnvironmentScope(const EnvironmentScope&) = delete;
    EnvironmentScope& operator=(const EnvironmentScope&) = delete;

  private:
    Environment previous_;
};

}  // namespace corvane
