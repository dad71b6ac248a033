// Whether the desktop has a tray by now: there from the start, late, or gone again.
#pragma once

#include <QObject>
#include <QTimer>

namespace corvane {

/// Watches for a host of status notifier items on the session bus (StatusNotifierWatcher). Qt asks for it
/// once in a program's life and keeps to the answer, so that no icon may be made before `came`.
class TrayWatch : public QObject {
    Q_OBJECT
  public:
    explicit TrayWatch(QObject* parent = nullptr);

    void start();
    bool isThere() const;
    /// Waits no longer: on X11, settles for the older kind of tray when no host has come so far.
    void settle();

  Q_SIGNALS:
    /// An icon that is made now gets there.
    void came();
    void went();

  private Q_SLOTS:
    void ask();

  private:
    void takeHost(bool hasHost);

    bool hasHost_ = false;
    bool isOlderKind_ = false;
    QTimer patience_;
};

}  // namespace corvane
