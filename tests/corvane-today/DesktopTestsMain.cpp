// Runs the tests with an application around them, on the platform that needs no display.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The session of whoever runs the tests is none of their business.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    testing::InitGoogleTest(&argumentCount, arguments);
    QApplication application(argumentCount, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
