// Alerts and reminders of the running program: the notifier, and what window and menus have to do with it.
#pragma once

#include <QMenu>
#include <QObject>

#include "apps/corvane-today/AlertNotifier.h"
#include "apps/corvane-today/Notifications.h"

namespace corvane {

class Application;

class DesktopAlerts : public QObject {
    Q_OBJECT
  public:
    /// Connects to the session bus.
    /// @param application  outlives this
    /// @param isSilent     no alerts in this run, whatever the user chose before
    DesktopAlerts(Application& application, bool isSilent);

    /// Adds the choice whether alerts are given.
    void fillMenu(QMenu* menu);

  private:
    void connectWindow();
    void choose(bool isEnabled);
    void open(const QString& taskid);

    Application& application_;
    Notifications notifications_;
    AlertNotifier notifier_;
};

}  // namespace corvane
