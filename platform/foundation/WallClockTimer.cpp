#include "platform/foundation/WallClockTimer.h"

#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

// The moment as the timer takes it. All zeros would disarm it; years beyond its range wait for ever anyway.
timespec timerMoment(Date when) {
    constexpr double kFirst = 1;
    constexpr double kLast = 1e11;
    const double seconds = secondsSince1970(when);
    const double bounded = std::isnan(seconds) ? kFirst : std::clamp(seconds, kFirst, kLast);
    const double whole = std::floor(bounded);
    timespec moment = {};
    moment.tv_sec = static_cast<time_t>(whole);
    moment.tv_nsec = static_cast<long>((bounded - whole) * 1e9);
    return moment;
}

bool setTimer(int descriptor, const timespec& moment) {
    itimerspec setting = {};
    setting.it_value = moment;
    return timerfd_settime(descriptor, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &setting, nullptr) == 0;
}

}  // namespace

WallClockTimer::WallClockTimer() : descriptor_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {}

void WallClockTimer::arm(Date when) {
    if (setTimer(fd(), timerMoment(when)) || errno != ECANCELED) return;
    // The clock was set since the timer was armed last. The call that fails has used the notice up, so the
    // timer wakes at once to pass it on.
    clockChangedWhileArming_ = true;
    setTimer(fd(), timerMoment(dateFromSecondsSince1970(0)));
}

void WallClockTimer::disarm() {
    clockChangedWhileArming_ = false;
    setTimer(fd(), {});
}

WallClockTimer::Wake WallClockTimer::read() {
    std::uint64_t expirations = 0;
    const ssize_t count = ::read(fd(), &expirations, sizeof expirations);
    if (std::exchange(clockChangedWhileArming_, false)) return Wake::kClockChanged;
    if (count == sizeof expirations) return Wake::kDue;
    return count < 0 && errno == ECANCELED ? Wake::kClockChanged : Wake::kNone;
}

}  // namespace corvane
