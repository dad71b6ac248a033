#include "platform/foundation/UserDefaults.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <algorithm>

#include <chrono>
#include <cmath>
#include <ctime>
#include <string>
#include <thread>
#include <utility>
#include <variant>

#include "platform/foundation/FileContents.h"
#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/PropertyListBounds.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * kNanosecondsPerSecond + time.tv_nsec;
}

// A file written in the same tick of the kernel's clock as its last reading has the same stamp.
bool mayChangeUnnoticed(std::int64_t changed) {
    constexpr std::int64_t kTick = 20'000'000;
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now) - changed < kTick;
}

// The platform's reading of a text as a boolean: "YES", "true", "1", after blanks, a sign and zeros.
bool booleanOfText(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

std::variant<Bytes, std::error_code> readDefaults(const std::filesystem::path& file) {
    auto contents = contentsOfFile(file, kMaximumPropertyListSize);
    const auto* error = std::get_if<std::error_code>(&contents);
    if (error != nullptr && *error == std::errc::no_such_file_or_directory) return Bytes();
    return contents;
}

// Keeps two programs from writing over each other's keys. The lock is on the directory because the file
// itself is replaced at every writing.
FileDescriptor lockedDirectory(const std::filesystem::path& directory) {
    constexpr int kAttempts = 200;
    constexpr std::chrono::milliseconds kPause{10};
    FileDescriptor descriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int attempt = 0; descriptor && attempt < kAttempts; ++attempt) {
        if (flock(descriptor.get(), LOCK_EX | LOCK_NB) == 0) return descriptor;
        std::this_thread::sleep_for(kPause);
    }
    return {};
}

}  // namespace

UserDefaults::UserDefaults(std::filesystem::path file) : file_(std::move(file)) {}

std::optional<PropertyList> UserDefaults::objectForKey(std::string_view key) const {
    const PropertyList* value = find(key);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

std::int64_t UserDefaults::integerForKey(std::string_view key) const {
    const PropertyList* value = find(key);
    return value == nullptr ? 0 : value->integer().value_or(0);
}

bool UserDefaults::boolForKey(std::string_view key) const {
    const PropertyList* value = find(key);
    if (value == nullptr) return false;
    if (const auto* text = value->get<std::string>()) return booleanOfText(*text);
    if (const auto* real = value->get<double>()) return *real != 0 && !std::isnan(*real);
    return value->integer().value_or(0) != 0;
}

bool UserDefaults::setObject(std::string_view key, const PropertyList& value) { return write(key, &value); }

bool UserDefaults::removeObjectForKey(std::string_view key) { return write(key, nullptr); }

const PropertyList* UserDefaults::find(std::string_view key) const {
    const PropertyList::Dictionary& all = contents();
    const auto found = all.find(key);
    return found == all.end() ? nullptr : &found->second;
}

const PropertyList::Dictionary& UserDefaults::contents() const {
    const Stamp stamp = stampOfFile();
    if (stamp_ == stamp) return contents_;
    contents_.clear();
    const auto data = readDefaults(file_);
    if (const auto* bytes = std::get_if<Bytes>(&data); bytes != nullptr && !bytes->empty()) {
        std::optional<PropertyList> list = propertyListFromData(*bytes);
        if (list && list->get<PropertyList::Dictionary>() != nullptr) {
            contents_ = std::get<PropertyList::Dictionary>(std::move(list->value));
        }
    }
    stamp_ = mayChangeUnnoticed(stamp.changed) ? std::nullopt : std::optional(stamp);
    return contents_;
}

UserDefaults::Stamp UserDefaults::stampOfFile() const {
    struct stat attributes = {};
    if (file_.empty() || stat(file_.c_str(), &attributes) != 0) return {};
    return {nanoseconds(attributes.st_mtim), nanoseconds(attributes.st_ctim), attributes.st_size,
            attributes.st_ino};
}

bool UserDefaults::write(std::string_view key, const PropertyList* value) {
    const std::filesystem::path directory = file_.parent_path();
    if (file_.empty() || !makePrivateDirectories(directory)) return false;
    const FileDescriptor lock = lockedDirectory(directory);
    if (!lock) return false;
    const auto before = readDefaults(file_);
    const auto* bytes = std::get_if<Bytes>(&before);
    if (bytes == nullptr) return false;
    const std::optional<Bytes> after = dataBySettingKey(*bytes, std::string(key), value);
    if (!after || after->size() > kMaximumPropertyListSize) return false;
    stamp_.reset();
    return !writeFileAtomically(file_, *after, FileAccess::kOwnerOnly);
}

}  // namespace corvane
