#include "PrivateBus.h"

#include <stdexcept>
#include <utility>

#include <QFile>

namespace corvane {
namespace {

// The desktop's own services are not to be started from here.
constexpr const char* kConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

QString service() { return QStringLiteral("org.freedesktop.Notifications"); }
QString path() { return QStringLiteral("/org/freedesktop/Notifications"); }

}  // namespace

PrivateBus::PrivateBus() {
    QFile file(directory_.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no file for the bus");
    file.write(QString::fromLatin1(kConfiguration).arg(directory_.path()).toUtf8());
    file.close();
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address")});
    constexpr int kPatience = 60'000;
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(kPatience)) throw std::runtime_error("the bus does not start");
    }
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
    daemon_.kill();
    daemon_.waitForFinished();
}

QDBusConnection PrivateBus::connection() {
    static int count = 0;
    names_ << QStringLiteral("test%1").arg(++count);
    return QDBusConnection::connectToBus(address_, names_.back());
}

NotificationServer::NotificationServer(const QDBusConnection& bus, QStringList capabilities)
    : bus_(bus), capabilities_(std::move(capabilities)) {
    bus_.registerObject(path(), this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    if (!bus_.registerService(service())) throw std::runtime_error("the name is taken");
}

NotificationServer::~NotificationServer() {
    bus_.unregisterService(service());
    bus_.unregisterObject(path());
}

QStringList NotificationServer::GetCapabilities() {
    ++questions_;
    return capabilities_;
}

uint NotificationServer::Notify(const QString&, uint replaced, const QString&, const QString& summary,
                                const QString& body, const QStringList& actions, const QVariantMap& hints,
                                int) {
    const uint id = replaced == 0 ? static_cast<uint>(shown_.size()) + 1 : replaced;
    shown_.push_back({id, replaced, summary, body, actions, hints});
    return id;
}

void NotificationServer::CloseNotification(uint id) { closed_.push_back(id); }

}  // namespace corvane
