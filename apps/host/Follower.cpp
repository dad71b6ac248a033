#include "apps/host/Follower.h"

#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/foundation/Environment.h"
#include "platform/store/SqliteStore.h"

namespace corvane {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

// A writer that never rests is shown all the same.
constexpr milliseconds kLongestBurst{500};
// A commit is written to the log, which is an event, and can be read only when the disk has it, which is
// none: the store is asked again at growing intervals.
constexpr milliseconds kFirstCheckAgain{250};
constexpr milliseconds kLastCheckAgain{4000};
// The zone's own cache looks at the file again after 100 ms.
constexpr milliseconds kTimeZonePause{150};

constexpr const char* kTimeZoneDirectory = "/etc";
constexpr std::string_view kTimeZoneFile = "localtime";

timespec timespecOf(nanoseconds duration) {
    const auto whole = duration_cast<seconds>(duration);
    timespec result = {};
    result.tv_sec = static_cast<time_t>(whole.count());
    result.tv_nsec = static_cast<long>((duration - whole).count());
    return result;
}

std::optional<std::filesystem::path> storeFile() {
    const auto& directory = Environment::current().containerDirectory;
    if (!directory) return std::nullopt;
    return *directory / kStoreFileName;
}

bool storeFileExists() {
    const auto file = storeFile();
    std::error_code error;
    return file && std::filesystem::exists(*file, error);
}

}  // namespace

Follower::Follower(WidgetHost& host)
    : host_(host),
      events_(epoll_create1(EPOLL_CLOEXEC)),
      pause_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      timeZone_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    add(pause_.get());
    add(wallClock_.fd());
    watchTimeZone();
}

void Follower::add(int descriptor) {
    if (descriptor < 0) return;
    epoll_event event = {};
    event.events = EPOLLIN;
    epoll_ctl(events_.get(), EPOLL_CTL_ADD, descriptor, &event);
}

// The watch comes first, and the data version before the rows: a commit that falls between them is found
// afterwards, at the worst twice.
void Follower::refresh() {
    if (pollsStore()) watchStore();
    host_.openStore();
    dataVersion_.reset();
    if (SqliteStore* store = host_.store()) dataVersion_ = store->dataVersion();
    hasTimeZoneChanged_ = false;
    host_.refresh();
    waitForWallClock();
    if (pollsStore()) armPause(duration_cast<Clock::duration>(StoreWatcher::kPollInterval));
}

// A directory that has lost its store may go as well, and come again, without any event.
bool Follower::pollsStore() const {
    return !storeWatcher_ || !storeWatcher_->fileDescriptor() || !host_.store();
}

// The file may lie in a directory that is not there yet.
void Follower::watchStore() {
    storeWatcher_.reset();
    const auto file = storeFile();
    if (!file) return;
    storeWatcher_.emplace(*file);
    if (const auto descriptor = storeWatcher_->fileDescriptor()) add(*descriptor);
}

void Follower::watchTimeZone() {
    constexpr std::uint32_t kEvents = IN_CREATE | IN_DELETE | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ONLYDIR;
    if (timeZone_ && inotify_add_watch(timeZone_.get(), kTimeZoneDirectory, kEvents) >= 0) {
        add(timeZone_.get());
    }
}

bool Follower::readTimeZoneEvents() {
    bool hasChanged = false;
    alignas(inotify_event) char buffer[4096];
    for (ssize_t size = 0; (size = read(timeZone_.get(), buffer, sizeof buffer)) > 0;) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event;
            std::memcpy(&event, buffer + at, sizeof event);
            if (event.len > 0 && buffer + at + sizeof event == kTimeZoneFile) hasChanged = true;
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    return hasChanged;
}

// By the clock of the machine, as far ahead as the program's own clock says. A clock that stands still never
// gets there.
void Follower::waitForWallClock() {
    const Date clock = now();
    const bool standsStill = refreshedAt_ == clock;
    refreshedAt_ = clock;
    if (standsStill) return wallClock_.disarm();
    wallClock_.arm(ReferenceClock::now() + (host_.validUntil() - clock));
}

bool Follower::takeEvents() {
    bool isDue = wallClock_.read() != WallClockTimer::Wake::kNone;
    if (storeWatcher_ && storeWatcher_->readEvents()) {
        startPause(duration_cast<Clock::duration>(StoreWatcher::kQuietTime));
        checkAgainAfter_ = kFirstCheckAgain;
    }
    if (readTimeZoneEvents()) {
        hasTimeZoneChanged_ = true;
        startPause(kTimeZonePause);
    }
    if (!isPauseOver()) return isDue;
    if (hasStoreChanged()) isDue = true;
    if (!pollsStore()) checkAgainLater();
    return isDue;
}

void Follower::checkAgainLater() {
    if (!checkAgainAfter_) return;
    armPause(*checkAgainAfter_);
    *checkAgainAfter_ *= 2;
    if (*checkAgainAfter_ > kLastCheckAgain) checkAgainAfter_.reset();
}

void Follower::startPause(Clock::duration longest) {
    const Clock::time_point time = Clock::now();
    if (!burstBegan_) burstBegan_ = time;
    armPause(std::min(longest, *burstBegan_ + kLongestBurst - time));
}

void Follower::armPause(Clock::duration duration) {
    itimerspec setting = {};
    setting.it_value = timespecOf(std::max<nanoseconds>(duration, nanoseconds(1)));
    timerfd_settime(pause_.get(), 0, &setting, nullptr);
}

bool Follower::isPauseOver() {
    std::uint64_t expirations = 0;
    if (read(pause_.get(), &expirations, sizeof expirations) != sizeof expirations) return false;
    burstBegan_.reset();
    return true;
}

bool Follower::hasStoreChanged() {
    if (pollsStore()) {
        watchStore();
        if (pollsStore()) armPause(duration_cast<Clock::duration>(StoreWatcher::kPollInterval));
    }
    if (std::exchange(hasTimeZoneChanged_, false)) return true;
    SqliteStore* store = host_.store();
    if (!store) return storeFileExists();
    return !dataVersion_ || store->isReplaced() || store->dataVersion() != *dataVersion_;
}

}  // namespace corvane
