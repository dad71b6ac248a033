#include <unistd.h>

#include <cstdlib>

#include <QApplication>

#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/Autostart.h"
#include "apps/corvane-today/DesktopBus.h"
#include "apps/corvane-today/DesktopOptions.h"
#include "apps/corvane-today/PngOutput.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Localization.h"

namespace {

// Qt's own lines are no business of our users; when it gives up, it is for want of a display.
void hushQt(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtFatalMsg) return;
    using namespace corvane;
    say(localizedUtf8("the display cannot be used: %@",
                      {message.section(QChar(u'\n'), 0, 0).toStdU16String()}));
    _exit(EXIT_FAILURE);
}

bool hasDisplay() {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(variable)) return true;
    }
    return false;
}

int autostart(bool isOn) {
    const auto problem = corvane::setAutostarted(isOn);
    if (problem) corvane::say(*problem);
    return problem ? EXIT_FAILURE : EXIT_SUCCESS;
}

int run(const corvane::DesktopOptions& options, QApplication& qt) {
    using namespace corvane;
    qt.setLayoutDirection(Locale::current().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    if (options.png) {
        const auto problem = writePng(options);
        if (problem) say(*problem);
        return problem ? EXIT_FAILURE : EXIT_SUCCESS;
    }
    if (!options.standsAlone() && handOverStart(options)) return EXIT_SUCCESS;
    Application application(options);
    application.start();
    return QApplication::exec();
}

}  // namespace

int main(int argumentCount, char** arguments) {
    using namespace corvane;
    const CommandLineReading reading = readCommandLine(argumentCount, arguments);
    if (!reading.options) return reading.exitCode;
    const DesktopOptions& options = *reading.options;
    if (options.autostart) return autostart(*options.autostart);
    qInstallMessageHandler(hushQt);
    if (options.png) drawWithoutDisplay(options.png->scale);
    if (!hasDisplay()) {
        say(localizedUtf8("there is no display; draw into a file with --png FILE, or use: corvane today"));
        return EXIT_FAILURE;
    }
    QGuiApplication::setDesktopFileName(QStringLiteral("com.velmor.CorvaneToday"));
    QApplication::setStyle(QStringLiteral("Fusion"));
    int programNameOnly = 1;  // our own options are none of Qt's
    QApplication qt(programNameOnly, arguments);
    return run(options, qt);
}
