// Desktop notifications by the protocol org.freedesktop.Notifications 1.2.
//
// Nothing waits: the server is asked for its capabilities first, and what is to be shown stays until it has
// answered. A server that is not there yet, fails or is replaced by another one is asked again.
#pragma once

#include <map>
#include <optional>

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

class QDBusPendingCall;

namespace corvane {

/// All texts are plain.
struct NotificationContent {
    QString summary;
    QString body;
    /// A freedesktop.org sound name or a sound's file name; empty: the server's own choice.
    QString soundName;
    /// Keys of actions and what they are called; shown where the server has actions.
    QList<std::pair<QString, QString>> actions;
};

class Notifications : public QObject {
    Q_OBJECT
  public:
    explicit Notifications(const QDBusConnection& bus, QObject* parent = nullptr);

    /// Whether a server has told what it can do.
    bool isReady() const { return capabilities_.has_value(); }
    /// Asks for a server, unless one is there or being asked.
    void prepare();

    /// Shows a notification, in the place of an older one of the same key.
    void show(const QString& key, const NotificationContent& content);
    void close(const QString& key);

  Q_SIGNALS:
    void ready();
    /// @param action           the key of an action; "default" for the notification itself
    /// @param activationToken  lets a window come to the front (XDG activation); may be empty
    void actionInvoked(const QString& key, const QString& action, const QString& activationToken);
    /// It is not on the screen any more, whoever closed it.
    void closed(const QString& key);

  private Q_SLOTS:
    void takeAction(uint id, const QString& action);
    void takeToken(uint id, const QString& token);
    void takeClosed(uint id, uint reason);

  private:
    template <class Take>
    void whenFinished(const QDBusPendingCall& call, Take take);
    void ask();
    void takeCapabilities(const QStringList& capabilities);
    void takeOwner(const QString& owner);
    void send(const QString& key, const NotificationContent& content);
    QVariantMap hintsOf(const NotificationContent& content) const;
    QStringList actionsOf(const NotificationContent& content) const;
    bool can(const char* capability) const;
    std::optional<QString> keyOf(uint id) const;

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    std::optional<QStringList> capabilities_;  ///< none: no server has answered
    bool isAsking_ = false;
    int question_ = 0;
    std::map<QString, NotificationContent> waiting_;
    std::map<QString, uint> ids_;  ///< of what is on the screen
    std::map<uint, QString> tokens_;
};

}  // namespace corvane
