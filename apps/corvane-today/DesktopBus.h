// One program a session: the name on the session bus, and the interface by which a second start and the
// desktop reach the first (freedesktop.org desktop entries, "D-Bus Activation").
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include "apps/corvane-today/DesktopOptions.h"

namespace corvane {

/// Gives a start to the program that runs already: privacy and mode, then the URL. Without a URL the window
/// is raised, unless the start was to stay in the background. What the running program keeps as it is, is
/// said on standard error. Without a session bus, and where none runs, nobody takes the start.
/// @return whether it was taken
bool handOverStart(const DesktopOptions& options);

class DesktopBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
  public:
    using QObject::QObject;

    /// Takes the name. @return false where another program has it already
    bool take();

  public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter,
                                     const QVariantMap& platformData);

  Q_SIGNALS:
    void activationWanted();
    /// A URL from outside.
    void openWanted(const QString& url);
    void addTaskWanted();
    void todayWanted();
    void privacyWanted();
    void modeWanted(DisplayMode mode);
};

}  // namespace corvane
