// Where a new, moved or copied task goes: the options and their meaning.
#pragma once

#include <optional>
#include <string>

#include "model/GSData.h"

namespace CLI {
class App;
}

namespace corvane {

struct PlaceOptions {
    std::optional<std::string> list;
    std::optional<std::string> account;
    std::optional<std::string> parent;
    std::optional<std::string> after;
    bool isFirst = false;

    bool isEmpty() const { return !list && !account && !parent && !after && !isFirst; }
};

struct NewPlace {
    GList* list = nullptr;  ///< never null
    GTask* parent = nullptr;
    GTask* previous = nullptr;
};

void addPlaceOptions(CLI::App& command, PlaceOptions& options);

/// The place that the options name: behind the last sibling unless they say otherwise. Without options it is
/// the default list of the default account; account and list are made where there is none yet.
/// @throws CommandFailure
NewPlace placeForNewTask(GSData& data, const PlaceOptions& options);
/// The same for a task that is there: without a list, its own.
NewPlace placeForTask(GSData& data, const GTask& task, const PlaceOptions& options);

/// The account named, or the default one. @throws CommandFailure where there is none
GUser& accountOrDefault(GSData& data, const std::optional<std::string>& name);

}  // namespace corvane
