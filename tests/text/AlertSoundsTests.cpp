#include "text/AlertSounds.h"

#include <limits>

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(AlertSounds, HaveNamesFrom1To47) {
    EXPECT_EQ(soundNameForAlertSound(1), u"AlarmDefault.caf");
    EXPECT_EQ(soundNameForAlertSound(24), u"By The Seaside.caf");
    EXPECT_EQ(soundNameForAlertSound(32), u"Night Owl.caf");
    EXPECT_EQ(soundNameForAlertSound(33), u"Opening.caf");
    EXPECT_EQ(soundNameForAlertSound(47), u"Waves.caf");
    for (const std::int32_t sound : {0, 48, -1, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(soundNameForAlertSound(sound), std::nullopt) << sound;
        EXPECT_EQ(soundForAlertSound(sound), std::nullopt) << sound;
    }
}

TEST(AlertSounds, PlayTheDefaultSoundInsteadOfTheFirstFile) {
    EXPECT_EQ(soundForAlertSound(1), NotificationSound{std::nullopt});
    EXPECT_EQ(soundForAlertSound(2), NotificationSound{u"AlarmBeep.caf"});
}

}  // namespace
}  // namespace corvane
