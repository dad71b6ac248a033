#include "apps/corvane-today/TrayWatch.h"

#include <chrono>
#include <utility>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QSystemTrayIcon>

namespace corvane {
namespace {

const QString kService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kPath = QStringLiteral("/StatusNotifierWatcher");

// A session that starts everything at once brings its panel up within this time.
constexpr std::chrono::seconds kPatience{10};

bool isX11() { return QGuiApplication::platformName() == QLatin1String("xcb"); }

}  // namespace

TrayWatch::TrayWatch(QObject* parent) : QObject(parent) {
    patience_.setSingleShot(true);
    patience_.setInterval(kPatience);
    connect(&patience_, &QTimer::timeout, this, &TrayWatch::settle);
}

void TrayWatch::start() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return settle();
    auto* watcher = new QDBusServiceWatcher(kService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                takeHost(false);
                if (!owner.isEmpty()) ask();
            });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus.connect(kService, kPath, kService, QString::fromLatin1(signal), this, SLOT(ask()));
    }
    ask();
    patience_.start();
}

bool TrayWatch::isThere() const { return isOlderKind_ ? QSystemTrayIcon::isSystemTrayAvailable() : hasHost_; }

void TrayWatch::settle() {
    patience_.stop();
    if (hasHost_ || !isX11() || std::exchange(isOlderKind_, true)) return;
    Q_EMIT came();
}

// The watcher may be there before any host is.
void TrayWatch::ask() {
    QDBusMessage get = QDBusMessage::createMethodCall(
        kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << kService << QStringLiteral("IsStatusNotifierHostRegistered");
    get.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(get), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        takeHost(!reply.isError() && reply.value().variant().toBool());
        finished->deleteLater();
    });
}

void TrayWatch::takeHost(bool hasHost) {
    if (isOlderKind_ || hasHost == std::exchange(hasHost_, hasHost)) return;
    patience_.stop();
    hasHost ? Q_EMIT came() : Q_EMIT went();
}

}  // namespace corvane
