// The demonstration's tasks as a table.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "model/GTask.h"

namespace corvane {

enum class DemoList { kHome, kShopping, kGarden, kOldPlans, kWork, kClients, kSomeday, kPrivate, kBirthdays };

struct DemoTask {
    enum class State { kOpen, kCompleted, kRemoved };
    enum class Rule { kPlain, kMondayToFriday, kSecondThursday, kLastWorkingDay };

    DemoList list = DemoList::kHome;
    int depth = 0;  ///< below the last task of a smaller depth
    const char16_t* name = nullptr;
    std::optional<int> day = std::nullopt;     ///< from today
    std::optional<int> minute = std::nullopt;  ///< of the day; none: all day
    std::int32_t priority = 0;
    std::optional<int> alertBefore = std::nullopt;  ///< minutes
    std::int32_t repeat = kNoRepeat;
    std::int32_t interval = 1;
    Rule rule = Rule::kPlain;
    const char16_t* notes = nullptr;
    State state = State::kOpen;
};

/// List by list, each in tree order.
std::span<const DemoTask> demoTasks();

}  // namespace corvane
