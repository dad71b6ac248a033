// Which tasks a command is about: a filter, a list, a predicate of the user's own, and their order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/corvane/Program.h"
#include "platform/store/FetchRequest.h"

namespace CLI {
class App;
}

namespace corvane {

struct TaskQueryOptions {
    std::string filter;  ///< a name or a number; empty: every live task
    std::string account;
    std::string list;
    std::string where;
    std::optional<int> order;
    std::optional<std::size_t> limit;
    bool hideCompleted = false;
    bool rootsOnly = false;
};

void addTaskQueryOptions(CLI::App& command, TaskQueryOptions& options);

/// The number of a filter by its number or name, in English or the user's language, case and accents aside.
/// @throws CommandFailure
std::uint32_t filterFromText(const std::string& text);

/// The fetch that the options ask for. A filter is asked for the account named, else the one of the list,
/// else the default one; without a filter, every account's tasks are meant. The order is the one given, else
/// the one that the filter or list remembers.
/// @throws CommandFailure
FetchRequest taskRequest(Program& program, const TaskQueryOptions& options);

/// @throws CommandFailure when the store cannot answer
std::vector<GTask*> fetchTasks(Program& program, const TaskQueryOptions& options);
std::size_t countTasks(Program& program, const TaskQueryOptions& options);

}  // namespace corvane
