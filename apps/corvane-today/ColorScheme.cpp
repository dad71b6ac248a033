#include "apps/corvane-today/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace corvane {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");

// Of color-scheme; 2 is light, 0 no preference, for which numbers of later versions are to be taken.
constexpr uint kPrefersDark = 1;

// Read answers with a variant in a variant.
QVariant innermost(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

ColorScheme::ColorScheme(bool isDark, QObject* parent) : QObject(parent), isDesktopDark_(isDark) {}

void ColorScheme::follow() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    qRegisterMetaType<QDBusVariant>();  // without its name known, the signal would not be connected
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(takeChange(QString, QString, QDBusVariant)));
    QDBusMessage read = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    read << kAppearance << kKey;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (!reply.isError()) takeValue(reply.value().variant());
        finished->deleteLater();
    });
}

bool ColorScheme::isDark() const {
    return choice_ == Choice::kAuto ? isDesktopDark_ : choice_ == Choice::kDark;
}

void ColorScheme::setChoice(Choice choice) {
    update([this, choice] { choice_ = choice; });
}

void ColorScheme::takeChange(const QString& nameSpace, const QString& key, const QDBusVariant& value) {
    if (nameSpace == kAppearance && key == kKey) takeValue(value.variant());
}

void ColorScheme::takeValue(const QVariant& value) {
    bool isNumber = false;
    const uint scheme = innermost(value).toUInt(&isNumber);
    if (!isNumber) return;
    update([this, scheme] { isDesktopDark_ = scheme == kPrefersDark; });
}

void ColorScheme::update(const std::function<void()>& change) {
    const bool wasDark = isDark();
    change();
    if (isDark() != wasDark) Q_EMIT changed();
}

}  // namespace corvane
