// The icon in the desktop's tray: the number of due tasks, a menu, the window by a click.
#pragma once

#include <cstddef>

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

namespace corvane {

class TrayIcon : public QObject {
    Q_OBJECT
  public:
    explicit TrayIcon(QObject* parent = nullptr);

    /// @param sentence  what the tooltip says
    void showCount(std::size_t count, const QString& sentence);

  Q_SIGNALS:
    void toggleWanted();
    void addWanted();
    void todayWanted();
    /// The menu is about to show; whoever listens adds to it.
    void menuOpening(QMenu* menu);

  private:
    void fillMenu();

    QMenu menu_;
    QSystemTrayIcon icon_;
};

/// A badge with the number, or a tick for none; crisp in every size that trays use.
QIcon trayIconOf(std::size_t count);

}  // namespace corvane
