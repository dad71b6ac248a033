// Trees of tasks as one text, both ways: "Milk(Skimmed Full+) Bread*".
//
// Tasks stand in the order of their positions, children in brackets. After the name: '*' removed (behind its
// live siblings), '+' completed, '#' known to the server, "@5" the position where it is not the task's place
// in the tree. A text without "@" is an order without faults.
#pragma once

#include <string>
#include <string_view>

#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"

namespace corvane {

GUser& makeAccount(ManagedObjectContext& context, std::u16string_view name = u"Account");

/// An empty list at the end of the account.
GList& makeList(GUser& account, std::u16string_view name);

/// Puts the tasks of a text into a list; removed ones have position 0 unless the text says otherwise.
void plant(GList& list, std::string_view tree);

/// The list's tasks as text.
std::string treeText(const GList& list);
/// The same without removed tasks and without marks.
std::string liveTreeText(const GList& list);

/// The task with a name, removed ones included. Stops the test program when there is none.
GTask& task(const GList& list, std::string_view name);

std::string nameOf(const GTask* task);  ///< "-" for null

}  // namespace corvane
