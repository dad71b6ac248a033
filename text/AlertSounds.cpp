#include "text/AlertSounds.h"

#include <iterator>

namespace corvane {
namespace {

// In the order of their numbers, from 1. Stored tasks mean these positions.
constexpr std::u16string_view kSoundNames[] = {
    u"AlarmDefault.caf", u"AlarmBeep.caf",     u"AlarmClock1.caf",   u"AlarmClock2.caf",
    u"AlarmClock3.caf",  u"AlarmDoorBell.caf", u"AlarmPhone.caf",    u"AlarmSoftBells.caf",
    u"aurora.caf",       u"bamboo.caf",        u"chord.caf",         u"circles.caf",
    u"complete.caf",     u"hello.caf",         u"input.caf",         u"keys.caf",
    u"note.caf",         u"popcorn.caf",       u"pulse.caf",         u"synth.caf",
    u"Apex.caf",         u"Beacon.caf",        u"Bulletin.caf",      u"By The Seaside.caf",
    u"Chimes.caf",       u"Circuit.caf",       u"Constellation.caf", u"Cosmic.caf",
    u"Crystals.caf",     u"Hillside.caf",      u"Illuminate.caf",    u"Night Owl.caf",
    u"Opening.caf",      u"Playtime.caf",      u"Presto.caf",        u"Radar.caf",
    u"Radiate.caf",      u"Ripples.caf",       u"Sencha.caf",        u"Signal.caf",
    u"Silk.caf",         u"Slow Rise.caf",     u"Stargaze.caf",      u"Summit.caf",
    u"Twinkle.caf",      u"Uplift.caf",        u"Waves.caf"};

constexpr std::int32_t kDefaultSound = 1;

}  // namespace

std::optional<std::u16string_view> soundNameForAlertSound(std::int32_t sound) {
    if (sound < 1 || sound > std::ssize(kSoundNames)) return std::nullopt;
    return kSoundNames[sound - 1];
}

std::optional<NotificationSound> soundForAlertSound(std::int32_t sound) {
    if (sound == kDefaultSound) return NotificationSound{};
    const std::optional<std::u16string_view> name = soundNameForAlertSound(sound);
    if (!name) return std::nullopt;
    return NotificationSound{name};
}

}  // namespace corvane
