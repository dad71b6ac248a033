#include "platform/foundation/TimeZone.h"

#include <sys/stat.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "platform/foundation/Environment.h"
#include "platform/foundation/PosixTimeZone.h"

namespace corvane {
namespace {

constexpr const char* kLocalTimeFile = "/etc/localtime";
constexpr std::int64_t kNanosecondsBetweenChecks = 100'000'000;

// What tells one state of a file from another: the link's own attributes and those of the file behind it.
using FileStamp = std::array<std::int64_t, 6>;

FileStamp stampOfFile(const char* path) {
    FileStamp stamp{};
    struct stat attributes = {};
    if (lstat(path, &attributes) == 0) {
        stamp[0] = static_cast<std::int64_t>(attributes.st_ino);
        stamp[1] = attributes.st_ctim.tv_sec;
        stamp[2] = attributes.st_ctim.tv_nsec;
    }
    if (stat(path, &attributes) == 0) {
        stamp[3] = static_cast<std::int64_t>(attributes.st_ino);
        stamp[4] = attributes.st_ctim.tv_sec;
        stamp[5] = attributes.st_ctim.tv_nsec;
    }
    return stamp;
}

std::int64_t coarseMonotonicNanoseconds() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

cctz::time_zone loadedTimeZone(const std::string& name) {
    cctz::time_zone zone;
    cctz::load_time_zone(name, &zone);  // leaves UTC when there is no such zone
    return zone;
}

// cctz keeps every zone for ever by its name. A path with one more slash is the same file by another name.
cctz::time_zone freshTimeZoneOfPath(const std::string& path) {
    static std::size_t slashes = 0;
    ++slashes;
    return loadedTimeZone(std::string(slashes, '/') + path);
}

// The zone of /etc/localtime, looked after by a stat now and then.
class LocalTimeZone {
  public:
    const cctz::time_zone& current() {
        const std::int64_t now = coarseMonotonicNanoseconds();
        if (!lastCheck_ || now - *lastCheck_ >= kNanosecondsBetweenChecks) {
            lastCheck_ = now;
            refresh();
        }
        return zone_;
    }

  private:
    void refresh() {
        const FileStamp stamp = stampOfFile(kLocalTimeFile);
        if (stamp == stamp_) return;
        stamp_ = stamp;
        zone_ = timeZoneOfFile(kLocalTimeFile);
    }

    std::optional<std::int64_t> lastCheck_;
    std::optional<FileStamp> stamp_;
    cctz::time_zone zone_;
};

// Programs set TZ=":/etc/localtime" to spare the C library its own checks; the file may change all the same.
bool namesLocalTimeFile(std::string_view setting) {
    if (setting.starts_with(':')) setting.remove_prefix(1);
    return setting == kLocalTimeFile;
}

// The zone of the last setting; a setting hardly ever changes.
const cctz::time_zone& cachedTimeZoneOfSetting(std::string_view setting) {
    static std::optional<std::string> keptSetting;
    static cctz::time_zone keptZone;
    if (!keptSetting || *keptSetting != setting) {
        keptSetting = setting;
        keptZone = timeZoneOfSetting(*keptSetting);
    }
    return keptZone;
}

}  // namespace

cctz::time_zone currentTimeZone() {
    const std::string& ofEnvironment = Environment::current().timeZone;
    if (!ofEnvironment.empty()) return cachedTimeZoneOfSetting(ofEnvironment);
    const char* setting = std::getenv("TZ");
    if (setting != nullptr && !namesLocalTimeFile(setting)) return cachedTimeZoneOfSetting(setting);
    static LocalTimeZone localTimeZone;
    return localTimeZone.current();
}

cctz::time_zone timeZoneOfSetting(const std::string& setting) {
    const std::string name = setting.starts_with(':') ? setting.substr(1) : setting;
    cctz::time_zone zone;
    if (name.empty() || cctz::load_time_zone(name, &zone)) return zone;
    return timeZoneOfPosixRules(name).value_or(zone);
}

cctz::time_zone timeZoneOfFile(const std::string& path) {
    constexpr std::string_view kZoneData = "/zoneinfo/";
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::canonical(path, error);
    if (error) return cctz::utc_time_zone();
    const std::string& file = canonical.native();
    if (const std::size_t start = file.find(kZoneData); start != std::string::npos) {
        cctz::time_zone zone;
        if (cctz::load_time_zone(file.substr(start + kZoneData.size()), &zone)) return zone;
    }
    return freshTimeZoneOfPath(file);
}

}  // namespace corvane
