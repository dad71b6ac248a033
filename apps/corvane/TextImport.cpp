// Tasks from plain text: the export's own form, or one task a line with indentation for subtasks.
#include <algorithm>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/TaskImport.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

constexpr std::u16string_view kCompletedMark = u"\u2713 ";
constexpr std::u16string_view kOpenMark = u"\u2752 ";
constexpr std::size_t kDetailIndent = 3;
constexpr std::size_t kTabWidth = 8;

struct Line {
    std::size_t indent = 0;  ///< in cells, tabs to every eighth
    std::u16string_view text;
};

Line lineOf(std::u16string_view raw) {
    Line line;
    std::size_t i = 0;
    for (; i < raw.size() && (raw[i] == u' ' || raw[i] == u'\t'); ++i) {
        line.indent = raw[i] == u'\t' ? (line.indent / kTabWidth + 1) * kTabWidth : line.indent + 1;
    }
    const std::size_t end = raw.find_last_not_of(u" \t\r");
    line.text =
        end == std::u16string_view::npos || end < i ? std::u16string_view() : raw.substr(i, end + 1 - i);
    return line;
}

std::vector<Line> linesOf(std::u16string_view text) {
    std::vector<Line> lines;
    while (!text.empty()) {
        const std::size_t end = text.find(u'\n');
        lines.push_back(lineOf(text.substr(0, end)));
        text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

// Takes a mark from the start of a text.
bool takePrefix(std::u16string_view& text, std::u16string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

struct DueText {
    Date date;
    bool hasTime = false;
};

// A due date as the export writes it, in the user's locale.
std::optional<DueText> dueFromExportedText(std::u16string_view text) {
    const Locale& locale = Locale::current();
    const Calendar calendar = Calendar::current();
    const cctz::civil_second today(calendar.civilDay(now()));
    for (const char* skeleton : {"EEEMMMd", "EEEMMMdyyyy"}) {
        const std::u16string& day = locale.patternForSkeleton(skeleton);
        if (const auto civil = locale.civilFromString(text, day, today)) {
            return DueText{calendar.dateFromCivil(*civil), false};
        }
        const std::u16string dayAndTime = day + u", " + locale.shortTimePattern();
        if (const auto civil = locale.civilFromString(text, dayAndTime, today)) {
            return DueText{calendar.dateFromCivil(*civil), true};
        }
    }
    return std::nullopt;
}

// Finds the parent of each task by its indentation: the nearest task above that stands further left.
class Nesting {
  public:
    std::optional<std::size_t> parentAt(std::size_t indent, std::size_t task) {
        while (!open_.empty() && open_.back().indent >= indent) open_.pop_back();
        const auto parent = open_.empty() ? std::nullopt : std::optional(open_.back().task);
        open_.push_back({indent, task});
        return parent;
    }
    std::size_t indent() const { return open_.empty() ? 0 : open_.back().indent; }

  private:
    struct Open {
        std::size_t indent;
        std::size_t task;
    };
    std::vector<Open> open_;
};

class ExportedText {
  public:
    ImportedList read(const std::vector<Line>& lines) {
        for (const Line& line : lines) take(line);
        return std::move(list_);
    }

  private:
    void take(const Line& line) {
        std::u16string_view text = line.text;
        const bool completed = takePrefix(text, kCompletedMark);
        if (completed || takePrefix(text, kOpenMark)) return takeTask(line.indent, text, completed);
        if (!list_.tasks.empty()) return takeDetail(line);
        if (text.ends_with(u':') && !list_.name) {
            list_.name = text.substr(0, text.size() - 1);
        } else if (!text.empty()) {
            takeTask(line.indent, text, completed);
        }
    }

    void takeTask(std::size_t indent, std::u16string_view name, bool completed) {
        ImportedTask task;
        task.name = name;
        task.completed = completed;
        task.parent = nesting_.parentAt(indent, list_.tasks.size());
        list_.tasks.push_back(std::move(task));
        isFirstDetail_ = true;
    }

    void takeDetail(const Line& line) {
        ImportedTask& task = list_.tasks.back();
        const bool mayBeDue = isFirstDetail_ && line.indent >= nesting_.indent() + kDetailIndent;
        isFirstDetail_ = false;
        if (const auto due = mayBeDue ? dueFromExportedText(line.text) : std::nullopt) {
            task.dueDate = due->date;
            task.hasDueTime = due->hasTime;
            return;
        }
        if (!task.notes.empty()) task.notes += u'\n';
        task.notes += line.text;
    }

    ImportedList list_;
    Nesting nesting_;
    bool isFirstDetail_ = false;
};

bool isExportedText(const std::vector<Line>& lines) {
    return std::any_of(lines.begin(), lines.end(), [](const Line& line) {
        return line.text.starts_with(kCompletedMark) || line.text.starts_with(kOpenMark);
    });
}

ImportedTask taskOfPlainLine(std::u16string_view text) {
    ImportedTask task;
    for (const std::u16string_view bullet : {u"- ", u"* ", u"\u2022 "}) {
        if (takePrefix(text, bullet)) break;
    }
    task.completed = takePrefix(text, u"[x] ") || takePrefix(text, u"[X] ");
    if (!task.completed) takePrefix(text, u"[ ] ");
    task.name = text;
    return task;
}

ImportedList readPlainLines(const std::vector<Line>& lines) {
    ImportedList list;
    Nesting nesting;
    for (const Line& line : lines) {
        if (line.text.empty()) continue;
        ImportedTask task = taskOfPlainLine(line.text);
        if (task.name.empty()) continue;
        task.parent = nesting.parentAt(line.indent, list.tasks.size());
        list.tasks.push_back(std::move(task));
    }
    return list;
}

}  // namespace

ImportResult importFromText(std::string_view utf8) {
    if (utf8.find('\0') != std::string_view::npos) return translated("the file is no text");
    const std::u16string text = textFromUtf8(utf8);
    const std::vector<Line> lines = linesOf(text);
    Import import;
    import.lists.push_back(isExportedText(lines) ? ExportedText().read(lines) : readPlainLines(lines));
    return import;
}

}  // namespace corvane
