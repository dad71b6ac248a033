#include "platform/foundation/NotificationCenter.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

TEST(NotificationCenter, DeliversByNameAndPosterInOrder) {
    NotificationCenter center;
    const int here = 0, elsewhere = 0;
    std::string heard;
    center.addObserver("saved", nullptr, [&](const Notification&) { heard += "any "; });
    center.addObserver("saved", &here,
                       [&](const Notification& n) { heard += std::any_cast<std::string>(n.userInfo); });
    center.addObserver("changed", &here, [&](const Notification&) { heard += "other "; });
    center.post({std::string("sav") + "ed", &here, std::string("here ")});
    EXPECT_EQ(heard, "any here ");
    center.post({"saved", &elsewhere, {}});
    EXPECT_EQ(heard, "any here any ");
    center.removeObserversOf(&here);
    center.post({"saved", &here, {}});
    EXPECT_EQ(heard, "any here any any ");
}

TEST(NotificationCenter, LetsHandlersAddAndRemoveObservers) {
    NotificationCenter center;
    std::string heard;
    NotificationCenter::Token first = 0, second = 0;
    first = center.addObserver("saved", nullptr, [&](const Notification&) {
        center.removeObserver(first);
        center.removeObserver(second);
        center.addObserver("saved", nullptr, [&](const Notification&) { heard += "new "; });
        heard += "first ";
    });
    second = center.addObserver("saved", nullptr, [&](const Notification&) { heard += "removed "; });
    center.addObserver("saved", nullptr, [&](const Notification&) { heard += "last "; });
    center.post({"saved", nullptr, {}});
    EXPECT_EQ(heard, "first last ");
    center.post({"saved", nullptr, {}});
    EXPECT_EQ(heard, "first last last new ");
}

}  // namespace
}  // namespace corvane
