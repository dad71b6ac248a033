// The program's place on the desktop: tray icon, hiding and raising, single instance, colours, menus.
//
// Nothing of it is needed for the window's first frame.
#pragma once

#include <memory>

#include <QMenu>
#include <QObject>
#include <QTimer>

#include "apps/corvane-today/ColorScheme.h"
#include "apps/corvane-today/DesktopBus.h"
#include "apps/corvane-today/TrayIcon.h"
#include "apps/corvane-today/TrayWatch.h"

namespace corvane {

class Application;

class DesktopPresence : public QObject {
    Q_OBJECT
  public:
    /// @param application  outlives this
    DesktopPresence(Application& application, ColorScheme& scheme);

    /// Takes the name on the session bus, unless this start stands alone; shows the tray icon; follows the
    /// desktop's colours.
    /// @return false where another program was quicker: it has taken this start
    bool start(const DesktopOptions& options);

    void showWindow();
    /// Hides where there is a tray to come back from, else minimises.
    void hideWindow();
    /// Hides where there is a tray, else ends the program.
    void closeWindow();
    void toggleWindow();
    /// A hidden window comes back when no tray shows up for a while.
    void waitForTray();

    /// The program's own entries of the window's and the tray's menu.
    void fillMenu(QMenu* menu);

  private:
    void connectBus();
    void makeTrayIcon();
    void loseTrayIcon();
    void showCount();
    void addColorChoices(QMenu* menu);
    void addAutostart(QMenu* menu);

    Application& application_;
    ColorScheme& scheme_;
    DesktopBus bus_;
    TrayWatch trayWatch_;
    std::unique_ptr<TrayIcon> tray_;
    QTimer trayPatience_;
    int trayQuestions_ = 0;
};

}  // namespace corvane
