// Runs the tests with an application around them, on the platform that needs no display.
#include <gtest/gtest.h>

#include <QApplication>

#include "PrivateBus.h"

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The session of whoever runs the tests is none of their business.
    corvane::PrivateBus session;
    qputenv("DBUS_SESSION_BUS_ADDRESS", session.address().toUtf8());
    testing::InitGoogleTest(&argumentCount, arguments);
    QApplication application(argumentCount, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
