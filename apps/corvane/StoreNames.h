// Tasks, lists and accounts by what people call them.
//
// A task: its identifier ("x-coredata://..." or "p12"), its number in the last listing, or a piece of its
// title. A list or account: its name or a piece of it, its number in the listing of lists or accounts, its
// identifier. Case and accents do not matter; a whole name goes before a piece. An ambiguous name lists the
// candidates on standard error and fails.
#pragma once

#include <string>
#include <vector>

#include "apps/corvane/Program.h"

namespace corvane {

enum class Prefer { kOpenTasks, kDoneTasks };

/// Where only one of the tasks of the preferred kind fits, others are not asked for.
/// @throws CommandFailure
GTask& taskNamed(GSData& data, const std::string& name, Prefer prefer = Prefer::kOpenTasks);
/// Several, each once.
std::vector<GTask*> tasksNamed(GSData& data, const std::vector<std::string>& names,
                               Prefer prefer = Prefer::kOpenTasks);
/// A live list, of one account unless that is null.
GList& listNamed(GSData& data, const std::string& name, const GUser* account = nullptr);
GUser& accountNamed(GSData& data, const std::string& name);

/// "p12".
std::string shortIdentifier(const ManagedObject& object);
/// A name for a line of the terminal: harmless, quoted; "(untitled)" without one.
std::string quotedName(std::optional<std::u16string_view> name);
/// The same without quotes.
std::string shownName(std::optional<std::u16string_view> name);
/// A list's name, quoted, with the name of its account: "Home" of "anna@example.com".
std::string nameWithAccount(const GList& list);
/// A text for a line of the terminal.
std::string shownText(std::u16string_view text);

/// A title from an argument: one line, blanks at its ends gone. @throws CommandFailure for an empty one
std::u16string titleFromArgument(const std::string& argument);

}  // namespace corvane
