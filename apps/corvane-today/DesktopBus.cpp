#include "apps/corvane-today/DesktopBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

const QString kName = QStringLiteral("com.velmor.CorvaneToday");
const QString kPath = QStringLiteral("/com/velmor/CorvaneToday");
const QString kInterface = QStringLiteral("org.freedesktop.Application");
const QString kToken = QStringLiteral("activation-token");
constexpr const char* kTokenVariable = "XDG_ACTIVATION_TOKEN";

// Actions; those of the desktop entry, and what a second start asks for.
constexpr QLatin1String kAddTask("AddTask");
constexpr QLatin1String kToday("Today");
constexpr QLatin1String kPrivate("Private");
constexpr QLatin1String kCompact("Compact");
constexpr QLatin1String kExpanded("Expanded");

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

bool isAnswered(const char* method, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(kName, kPath, kInterface, QString::fromLatin1(method));
    call.setArguments(arguments);
    call.setAutoStartService(false);
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(call, QDBus::Block, kPatienceInMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage;
}

bool isActionAnswered(QLatin1String action) {
    return isAnswered("ActivateAction", {QString(action), QVariantList(), QVariantMap()});
}

void sayWhatIsKept(const DesktopOptions& options) {
    QStringList kept;
    if (options.width) kept << QStringLiteral("--width");
    if (options.height) kept << QStringLiteral("--height");
    if (options.isSilent) kept << QStringLiteral("--no-alerts");
    if (kept.isEmpty()) return;
    say(localizedUtf8("the program runs already and keeps its own: %@",
                      {kept.join(QStringLiteral(", ")).toStdU16String()}));
}

}  // namespace

bool handOverStart(const DesktopOptions& options) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(kName)) return false;
    // Titles go before the window comes.
    if (options.isPrivate && !isActionAnswered(kPrivate)) return false;
    if (options.mode) {
        const bool isCompact = options.mode == DisplayMode::kCompact;
        if (!isActionAnswered(isCompact ? kCompact : kExpanded)) return false;
    }
    sayWhatIsKept(options);
    if (!options.openUrl.empty()) {
        return isAnswered("Open", {QStringList{QString::fromStdString(options.openUrl)}, platformData()});
    }
    return options.startsInBackground || isAnswered("Activate", {platformData()});
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
    if (name == kAddTask) Q_EMIT addTaskWanted();
    if (name == kToday) Q_EMIT todayWanted();
    if (name == kPrivate) Q_EMIT privacyWanted();
    if (name == kCompact) Q_EMIT modeWanted(DisplayMode::kCompact);
    if (name == kExpanded) Q_EMIT modeWanted(DisplayMode::kExpanded);
}

}  // namespace corvane
