// The desktop program over the container that its argument names, ended by its first frame.
#include <unistd.h>

#include <cstdlib>

#include <QApplication>
#include <QTimer>

#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/DesktopBus.h"
#include "apps/corvane-today/DesktopOptions.h"

int main(int argumentCount, char** arguments) {
    using namespace corvane;
    const CommandLineReading reading = readCommandLine(argumentCount, arguments);
    if (!reading.options) return reading.exitCode;
    QApplication::setStyle(QStringLiteral("Fusion"));
    int programNameOnly = 1;
    QApplication qt(programNameOnly, arguments);
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") && handOverStart({})) return EXIT_FAILURE;
    Application application(*reading.options);
    QObject::connect(&application.window(), &WidgetWindow::painted,
                     [] { QTimer::singleShot(0, [] { _exit(EXIT_SUCCESS); }); });
    application.start();
    return QApplication::exec();
}
