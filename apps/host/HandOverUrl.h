// The URLs with which the widget hands over, read from outside: anybody may have written them.
#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace corvane {

struct ShowToday {
    bool operator==(const ShowToday&) const = default;
};
struct ShowTask {
    std::string taskid;  ///< the object URI of a task, of whichever store

    bool operator==(const ShowTask&) const = default;
};
struct ShowAddTask {
    bool operator==(const ShowAddTask&) const = default;
};
using HandOverUrl = std::variant<ShowToday, ShowTask, ShowAddTask>;

/// Reads "velmor-plorixmax://localhost/today", the same with "?taskid=" and an encoded object URI, and
/// ".../addtask". Scheme and host may be in any case (RFC 3986); otherwise only what the widget writes is
/// read: no user, port, other or second parameter, nor fragment.
/// @return what to show, or why the URL is refused: one sentence for people, which repeats nothing of the URL
std::variant<HandOverUrl, std::u16string> handOverFromUrl(std::u16string_view url);

}  // namespace corvane
