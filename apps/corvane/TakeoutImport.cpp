// Tasks from Google Tasks' Takeout: JSON with lists under "items", each with its tasks under "items".
#include <map>

#include <nlohmann/json.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/ReadableText.h"
#include "apps/corvane/TaskImport.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/ZonedMoment.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kDeepest = 64;

std::u16string textAt(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) return {};
    return textFromUtf8(found->get_ref<const std::string&>());
}

bool flagAt(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_boolean() && found->get<bool>();
}

class TakeoutReader {
  public:
    explicit TakeoutReader(Import& import) : import_(import) {}

    // Children stand anywhere among the items, and name their parents.
    void readList(const Json& object) {
        ImportedList list;
        list.name = textAt(object, "title");
        std::map<std::u16string, std::size_t> places;
        std::vector<std::u16string> parents;
        const auto items = object.find("items");
        if (items != object.end() && items->is_array()) {
            for (const Json& item : *items) {
                if (!item.is_object() || !addTask(list, item)) continue;
                places.emplace(textAt(item, "id"), parents.size());
                parents.push_back(textAt(item, "parent"));
            }
        }
        for (std::size_t i = 0; i < parents.size(); ++i) {
            const auto parent = parents[i].empty() ? places.end() : places.find(parents[i]);
            if (parent != places.end()) list.tasks[i].parent = parent->second;
        }
        import_.lists.push_back(inTreeOrder(std::move(list)));
    }

  private:
    bool addTask(ImportedList& list, const Json& object) {
        if (flagAt(object, "deleted")) return false;
        ImportedTask task = taskFromJson(object);
        if (task.name.empty()) {
            import_.problems.push_back(translated("a task without a title was left out"));
            return false;
        }
        list.tasks.push_back(std::move(task));
        return true;
    }

    ImportedTask taskFromJson(const Json& object) {
        ImportedTask task;
        task.name = readableTitle(textAt(object, "title"));
        task.notes = readableText(textAt(object, "notes"));
        if (const auto due = momentAt(object, "due")) task.dueDate = dayOf(*due);
        task.completed = textAt(object, "status") == u"completed";
        constexpr TimeInterval kUtc{0};
        const auto completed = task.completed ? momentAt(object, "completed") : std::nullopt;
        if (completed) task.completedDate = completed->date(kUtc);
        return task;
    }

    std::optional<ZonedMoment> momentAt(const Json& object, const char* key) {
        const std::u16string text = textAt(object, key);
        const std::optional<ZonedMoment> moment = zonedMomentFromText(text);
        if (!moment && !text.empty()) {
            constexpr std::size_t kWidth = 40;
            import_.problems.push_back(translated("the date \"%@\" was left out: it cannot be read",
                                                  cutToWidth(terminalText(text), kWidth)));
        }
        return moment;
    }

    // A due date is a day, written as its midnight.
    static Date dayOf(const ZonedMoment& due) {
        const Calendar utc(cctz::utc_time_zone(), kSunday);
        return Calendar::current().startOfDay(utc.civilDay(due.wallClock));
    }

    Import& import_;
};

// The parser recurses, so that the depth is bounded before it runs away.
std::optional<Json> parse(std::string_view text) {
    std::size_t deepest = 0;
    const Json::parser_callback_t watch = [&](int depth, Json::parse_event_t, Json&) {
        deepest = std::max(deepest, static_cast<std::size_t>(depth));
        return deepest <= kDeepest;
    };
    Json json = Json::parse(text.begin(), text.end(), watch, false);
    if (json.is_discarded() || deepest > kDeepest) return std::nullopt;
    return json;
}

}  // namespace

ImportResult importFromTakeout(std::string_view json) {
    const std::optional<Json> root = parse(json);
    if (!root) return translated("the file is no JSON that can be read");
    const auto lists = root->find("items");
    if (lists == root->end() || !lists->is_array()) return translated("the file holds no task lists");
    Import import;
    TakeoutReader reader(import);
    for (const Json& list : *lists) {
        if (list.is_object()) reader.readList(list);
    }
    return import;
}

}  // namespace corvane
