// The sounds of a task's alert: a stored number stands for one of 47 sound files of the application.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

/// A sound of the notification service.
struct NotificationSound {
    std::optional<std::u16string_view> name;  ///< file name of a sound resource; none is the default sound

    bool operator==(const NotificationSound&) const = default;
};

/// The file name of sound 1 to 47 ("AlarmDefault.caf" is 1); any other number has none.
std::optional<std::u16string_view> soundNameForAlertSound(std::int32_t sound);

/// The sound that a notification plays. Number 1 is the service's default sound, not the file that
/// `soundNameForAlertSound` gives for 1; a number without a name has no sound.
std::optional<NotificationSound> soundForAlertSound(std::int32_t sound);

}  // namespace corvane
