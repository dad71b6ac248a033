// Named notifications between parts of the program, delivered at once to every observer.
#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace corvane {

struct Notification {
    std::string_view name;         ///< a constant of the poster
    const void* object = nullptr;  ///< who posts
    std::any userInfo;
};

class NotificationCenter {
  public:
    using Handler = std::function<void(const Notification&)>;
    using Token = std::uint64_t;

    static NotificationCenter& defaultCenter();

    /// @param object  only notifications of this poster; null for every poster
    Token addObserver(std::string_view name, const void* object, Handler handler);
    void removeObserver(Token token);
    /// Forgets the observers of a poster that goes away.
    void removeObserversOf(const void* object);

    /// Calls the handlers in the order of their registration. Handlers may add and remove observers.
    void post(const Notification& notification);

  private:
    struct Observer {
        Token token;
        std::string_view name;
        const void* object;
        Handler handler;
    };
    std::vector<Observer> observers_;
    Token nextToken_ = 1;
};

}  // namespace corvane
