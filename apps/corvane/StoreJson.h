// Tasks, lists and accounts as JSON objects: a promise to scripts. Fields are added, never renamed or left
// out; a missing value is null. Dates are RFC 3339 in UTC. Credentials are never told.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"

namespace corvane {

using Json = nlohmann::ordered_json;

Json taskJson(const GTask& task);
Json listJson(const GList& list);
Json accountJson(const GUser& account);

/// One line of UTF-8; texts that are no valid Unicode get replacement characters.
std::string jsonText(const Json& value);

}  // namespace corvane
