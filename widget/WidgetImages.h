// The widget's images: names of its assets and the size that each is drawn at.
#pragma once

#include "platform/views/Image.h"

namespace corvane {

struct ImageAsset {
    const char* name;
    Size size;  ///< in points

    Image image() const { return Image::named(name, size); }
};

inline constexpr ImageAsset kLockedBulletImage{
    "Task-CollapsedLocked", {16, 16}
};
inline constexpr ImageAsset kOpenBulletImage{
    "Task-VUnchecked", {16, 16}
};
inline constexpr ImageAsset kPriority1Image{
    "Task-Priority1", {6, 14}
};
inline constexpr ImageAsset kPriority2Image{
    "Task-Priority2", {11, 14}
};
inline constexpr ImageAsset kPriority3Image{
    "Task-Priority3", {16, 14}
};
inline constexpr ImageAsset kAlertImage{
    "Task-Alert", {12, 12}
};
inline constexpr ImageAsset kRepeatImage{
    "Task-Repeat", {12, 12}
};
inline constexpr ImageAsset kAddTaskImage{
    "AddTask", {22, 22}
};

}  // namespace corvane
