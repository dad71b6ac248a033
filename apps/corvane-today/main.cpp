#include <QApplication>

#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/DesktopOptions.h"

int main(int argumentCount, char** arguments) {
    using namespace corvane;
    const CommandLineReading reading = readCommandLine(argumentCount, arguments);
    if (!reading.options) return reading.exitCode;
    QGuiApplication::setDesktopFileName(QStringLiteral("com.velmor.CorvaneToday"));
    QApplication qt(argumentCount, arguments);
    Application application(*reading.options);
    application.start();
    return QApplication::exec();
}
