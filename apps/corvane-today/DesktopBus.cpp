#include "apps/corvane-today/DesktopBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace corvane {
namespace {

const QString kName = QStringLiteral("com.velmor.CorvaneToday");
const QString kPath = QStringLiteral("/com/velmor/CorvaneToday");
const QString kInterface = QStringLiteral("org.freedesktop.Application");
const QString kToken = QStringLiteral("activation-token");
constexpr const char* kTokenVariable = "XDG_ACTIVATION_TOKEN";

// A program that does not answer within this time is not worth waiting for.
constexpr int kPatienceInMilliseconds = 2000;

// Wayland lets a window come forward only with the token of the user's own act.
void takeToken(const QVariantMap& platformData) {
    const QByteArray token = platformData.value(kToken).toString().toUtf8();
    if (!token.isEmpty()) qputenv(kTokenVariable, token);
}

QVariantMap platformData() {
    QVariantMap data;
    const QString token = qEnvironmentVariable(kTokenVariable);
    if (!token.isEmpty()) data.insert(kToken, token);
    return data;
}

}  // namespace

bool handOverStart(const QString& url) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(kName)) return false;
    const bool opens = !url.isEmpty();
    QDBusMessage call = QDBusMessage::createMethodCall(
        kName, kPath, kInterface, opens ? QStringLiteral("Open") : QStringLiteral("Activate"));
    if (opens) call << QStringList{url};
    call << platformData();
    call.setAutoStartService(false);
    return bus.call(call, QDBus::Block, kPatienceInMilliseconds).type() == QDBusMessage::ReplyMessage;
}

bool DesktopBus::take() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return true;
    bus.registerObject(kPath, this, QDBusConnection::ExportScriptableSlots);
    return bus.registerService(kName);
}

void DesktopBus::Activate(const QVariantMap& platformData) {
    takeToken(platformData);
    Q_EMIT activationWanted();
}

void DesktopBus::Open(const QStringList& uris, const QVariantMap& platformData) {
    takeToken(platformData);
    if (uris.isEmpty()) return Q_EMIT activationWanted();
    for (const QString& uri : uris) Q_EMIT openWanted(uri);
}

void DesktopBus::ActivateAction(const QString& name, const QVariantList&, const QVariantMap& platformData) {
    takeToken(platformData);
    if (name == QLatin1String("AddTask")) Q_EMIT addTaskWanted();
    if (name == QLatin1String("Today")) Q_EMIT todayWanted();
}

}  // namespace corvane
