// An environment for tests: a fixed clock, zone and locale, English texts, a container of its own.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"

namespace corvane {

/// A directory under the system's temporary one, gone with all its contents at the end.
class TemporaryDirectory {
  public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

struct TestSurroundings {
    std::string timeZone = "UTC";
    std::string locale = "en_US";
    std::string now = "2024-03-05 12:00";  ///< civil time in `timeZone`
};

/// In force until the end of the scope. The container directory is a fresh temporary one.
class TestEnvironment {
  public:
    explicit TestEnvironment(const TestSurroundings& surroundings = {});

    Environment& operator*() const { return Environment::current(); }
    Environment* operator->() const { return &Environment::current(); }

    /// Sets the clock; civil time in the zone in force.
    void setNow(std::string_view civil) const;

    const std::filesystem::path& containerDirectory() const { return container_.path(); }

  private:
    TemporaryDirectory container_;
    EnvironmentScope scope_;
};

/// The instant of a civil time in the zone in force: "2024-03-05", "2024-03-05 09:00", "2024-03-05
/// 09:00:30.250".
Date at(std::string_view civil);

/// The civil time of an instant in the zone in force, as `at` reads it, in the shortest of the three forms
/// that keeps it ("2024-03-05 09:00").
std::string civilText(Date date);

}  // namespace corvane
