// Tasks that come from a file: what was read, before it becomes part of the store.
//
// Plain text, Google Tasks' Takeout JSON and iCalendar to-dos (RFC 5545) give the same values; only
// `addImportedTasks` knows the model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "apps/host/RepeatWords.h"
#include "model/GList.h"
#include "platform/foundation/Date.h"

namespace corvane {

struct ImportedTask {
    std::optional<std::size_t> parent;  ///< position of an earlier task of the same list
    std::u16string name;
    std::u16string notes;
    std::optional<Date> dueDate;
    bool hasDueTime = false;
    RepeatRule repeat;
    std::optional<Date> alertDate;
    std::int32_t priority = 0;
    bool completed = false;
    std::optional<Date> completedDate;
};

struct ImportedList {
    std::optional<std::u16string> name;
    std::vector<ImportedTask> tasks;  ///< in tree order: each followed by its subtree
};

struct Import {
    std::vector<ImportedList> lists;
    std::vector<std::string> problems;  ///< a line each about what could not be taken

    std::size_t taskCount() const;
};

/// An import, or one line that says why nothing could be read.
using ImportResult = std::variant<Import, std::string>;

/// Tells the format by the contents.
ImportResult importFromData(std::string_view data);

ImportResult importFromText(std::string_view utf8);
ImportResult importFromTakeout(std::string_view json);
ImportResult importFromCalendar(std::string_view calendar);

/// The same tasks with parents before children, siblings in their order. Parents may come in any order and in
/// circles; a circle is opened at its first task, which becomes a root.
ImportedList inTreeOrder(ImportedList list);

/// Appends the tasks to a list, in their order.
/// @return false when the list cannot hold them all; none was added then
[[nodiscard]] bool addImportedTasks(GList& list, const std::vector<ImportedTask>& tasks);

}  // namespace corvane
