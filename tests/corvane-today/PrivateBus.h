// A message bus of the test's own, gone with it, and a notification server on it that keeps what it is told.
#pragma once

#include <memory>
#include <vector>

#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

namespace corvane {

class PrivateBus {
  public:
    PrivateBus();
    ~PrivateBus();

    const QString& address() const { return address_; }
    /// Another connection to the bus at every call.
    QDBusConnection connection();

  private:
    QTemporaryDir directory_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

struct ShownNotification {
    uint id = 0;
    uint replaced = 0;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
};

class NotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
  public:
    /// Takes the service's name, as a server that starts.
    NotificationServer(const QDBusConnection& bus, QStringList capabilities);
    ~NotificationServer() override;

    const std::vector<ShownNotification>& shown() const { return shown_; }
    const std::vector<uint>& closed() const { return closed_; }
    int questions() const { return questions_; }

  public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& program, uint replaced, const QString& icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout);
    void CloseNotification(uint id);

  Q_SIGNALS:
    void ActionInvoked(uint id, const QString& action);
    void ActivationToken(uint id, const QString& token);
    void NotificationClosed(uint id, uint reason);

  private:
    QDBusConnection bus_;
    QStringList capabilities_;
    std::vector<ShownNotification> shown_;
    std::vector<uint> closed_;
    int questions_ = 0;
};

}  // namespace corvane
