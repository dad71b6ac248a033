#include "platform/foundation/WallClockTimer.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <limits>

namespace corvane {
namespace {

using Wake = WallClockTimer::Wake;

// Whether the timer has something to tell, within a minute where it should.
bool becomesReadable(const WallClockTimer& timer, bool isExpected) {
    pollfd descriptor{timer.fd(), POLLIN, 0};
    return poll(&descriptor, 1, isExpected ? 60'000 : 0) == 1;
}

TEST(WallClockTimer, WakesAtOnceForAPastMoment) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double seconds : {-1.0, -978307200.0, -kInfinity, std::numeric_limits<double>::quiet_NaN()}) {
        WallClockTimer timer;
        timer.arm(Date(TimeInterval(seconds)));
        EXPECT_TRUE(becomesReadable(timer, true)) << seconds;
        EXPECT_EQ(timer.read(), Wake::kDue);
        EXPECT_EQ(timer.read(), Wake::kNone);
    }
}

TEST(WallClockTimer, WaitsForWhatIsAhead) {
    WallClockTimer timer;
    EXPECT_EQ(timer.read(), Wake::kNone);
    for (const double seconds : {ReferenceClock::now().time_since_epoch().count() + 3600, 1e300}) {
        timer.arm(Date(TimeInterval(0)));
        timer.arm(Date(TimeInterval(seconds)));
        EXPECT_FALSE(becomesReadable(timer, false));
        EXPECT_EQ(timer.read(), Wake::kNone);
    }
    timer.arm(ReferenceClock::now() + TimeInterval(0.01));
    EXPECT_TRUE(becomesReadable(timer, true));
    timer.disarm();
    EXPECT_EQ(timer.read(), Wake::kNone);
}

}  // namespace
}  // namespace corvane
