#include "platform/foundation/NotificationCenter.h"

#include <algorithm>
#include <utility>

namespace corvane {

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

NotificationCenter::Token NotificationCenter::addObserver(std::string_view name, const void* object,
                                                          Handler handler) {
    const Token token = nextToken_++;
    observers_.push_back({token, name, object, std::move(handler)});
    return token;
}

void NotificationCenter::removeObserver(Token token) {
    std::erase_if(observers_, [token](const Observer& observer) { return observer.token == token; });
}

void NotificationCenter::removeObserversOf(const void* object) {
    if (object == nullptr) return;
    std::erase_if(observers_, [object](const Observer& observer) { return observer.object == object; });
}

void NotificationCenter::post(const Notification& notification) {
    std::vector<Token> receivers;
    for (const Observer& observer : observers_) {
        const bool wantsPoster = observer.object == nullptr || observer.object == notification.object;
        if (wantsPoster && observer.name == notification.name) receivers.push_back(observer.token);
    }
    for (const Token token : receivers) {
        const auto observer = std::ranges::find(observers_, token, &Observer::token);
        if (observer == observers_.end()) continue;
        const Handler handler = observer->handler;  // a copy: the handler may remove its own observer
        handler(notification);
    }
}

}  // namespace corvane
