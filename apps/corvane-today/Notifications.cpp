#include "apps/corvane-today/Notifications.h"

#include <algorithm>
#include <utility>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace corvane {
namespace {

QString service() { return QStringLiteral("org.freedesktop.Notifications"); }
QString path() { return QStringLiteral("/org/freedesktop/Notifications"); }

QDBusMessage callOf(const char* method, const QVariantList& arguments = {}) {
    QDBusMessage call = QDBusMessage::createMethodCall(service(), path(), service(), QLatin1String(method));
    call.setArguments(arguments);
    return call;
}

}  // namespace

Notifications::Notifications(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), bus_(bus), watcher_(service(), bus, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { takeOwner(owner); });
    bus_.connect(service(), path(), service(), QStringLiteral("ActionInvoked"), this,
                 SLOT(takeAction(uint, QString)));
    bus_.connect(service(), path(), service(), QStringLiteral("ActivationToken"), this,
                 SLOT(takeToken(uint, QString)));
    bus_.connect(service(), path(), service(), QStringLiteral("NotificationClosed"), this,
                 SLOT(takeClosed(uint, uint)));
}

template <class Take>
void Notifications::whenFinished(const QDBusPendingCall& call, Take take) {
    auto* watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [take](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        take(*finished);
    });
}

void Notifications::prepare() {
    if (!isReady() && !isAsking_) ask();
}

// An answer counts only while nobody has asked again: it may come from a server that has gone.
void Notifications::ask() {
    if (!bus_.isConnected()) return;
    isAsking_ = true;
    const int question = ++question_;
    whenFinished(bus_.asyncCall(callOf("GetCapabilities")), [this, question](const QDBusPendingCall& call) {
        const QDBusPendingReply<QStringList> reply = call;
        if (question != question_) return;
        isAsking_ = false;
        if (!reply.isError()) takeCapabilities(reply.value());
    });
}

void Notifications::takeCapabilities(const QStringList& capabilities) {
    capabilities_ = capabilities;
    for (const auto& [key, content] : std::exchange(waiting_, {})) send(key, content);
    Q_EMIT ready();
}

// Another server knows nothing of what the last one showed.
void Notifications::takeOwner(const QString& owner) {
    capabilities_.reset();
    tokens_.clear();
    for (const auto& [key, id] : std::exchange(ids_, {})) Q_EMIT closed(key);
    if (!owner.isEmpty()) ask();
}

void Notifications::show(const QString& key, const NotificationContent& content) {
    if (isReady()) return send(key, content);
    waiting_[key] = content;
    prepare();
}

void Notifications::send(const QString& key, const NotificationContent& content) {
    const auto shown = ids_.find(key);
    const uint replaced = shown == ids_.end() ? 0 : shown->second;
    const QString body = can("body-markup") ? content.body.toHtmlEscaped() : content.body;
    constexpr int kAsTheServerLikes = -1;
    QVariantList arguments = {QStringLiteral("Corvane Today"), replaced};
    arguments << QStringLiteral("com.velmor.CorvaneToday") << content.summary << body;
    arguments << actionsOf(content) << hintsOf(content) << kAsTheServerLikes;
    whenFinished(bus_.asyncCall(callOf("Notify", arguments)),
                 [this, key, content](const QDBusPendingCall& call) {
                     const QDBusPendingReply<uint> reply = call;
                     if (!reply.isError()) {
                         ids_[key] = reply.value();
                         return;
                     }
                     capabilities_.reset();
                     waiting_.try_emplace(key, content);
                 });
}

QVariantMap Notifications::hintsOf(const NotificationContent& content) const {
    constexpr uchar kNormal = 1;
    QVariantMap hints;
    hints[QStringLiteral("desktop-entry")] = QStringLiteral("com.velmor.CorvaneToday");
    hints[QStringLiteral("category")] = QStringLiteral("x-corvane.task");
    hints[QStringLiteral("urgency")] = QVariant::fromValue(kNormal);
    if (!content.soundName.isEmpty()) hints[QStringLiteral("sound-name")] = content.soundName;
    return hints;
}

QStringList Notifications::actionsOf(const NotificationContent& content) const {
    QStringList actions;
    if (!can("actions")) return actions;
    for (const auto& [key, name] : content.actions) actions << key << name;
    return actions;
}

bool Notifications::can(const char* capability) const {
    return capabilities_ && capabilities_->contains(QLatin1String(capability));
}

void Notifications::close(const QString& key) {
    waiting_.erase(key);
    const auto shown = ids_.find(key);
    if (shown == ids_.end()) return;
    bus_.send(callOf("CloseNotification", {shown->second}));
    ids_.erase(shown);
}

std::optional<QString> Notifications::keyOf(uint id) const {
    const auto found =
        std::find_if(ids_.begin(), ids_.end(), [id](const auto& entry) { return entry.second == id; });
    return found == ids_.end() ? std::nullopt : std::optional(found->first);
}

void Notifications::takeToken(uint id, const QString& token) {
    if (keyOf(id)) tokens_[id] = token;
}

void Notifications::takeAction(uint id, const QString& action) {
    const std::optional<QString> key = keyOf(id);
    if (!key) return;
    const auto token = tokens_.extract(id);
    Q_EMIT actionInvoked(*key, action, token ? token.mapped() : QString());
}

void Notifications::takeClosed(uint id, uint) {
    const std::optional<QString> key = keyOf(id);
    tokens_.erase(id);
    if (!key) return;
    ids_.erase(*key);
    Q_EMIT closed(*key);
}

}  // namespace corvane
