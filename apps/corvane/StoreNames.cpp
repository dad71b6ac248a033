#include "apps/corvane/StoreNames.h"

#include <algorithm>
#include <charconv>
#include <functional>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/LastListing.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/DateWords.h"
#include "apps/host/Places.h"
#include "apps/host/TaskEditing.h"
#include "platform/foundation/Text.h"
#include "platform/store/SqliteStore.h"

namespace corvane {
namespace {

std::optional<std::size_t> numberFromText(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

// "p12" or a whole URI; null when the text is neither.
template <class Object>
Object* objectFromIdentifier(GSData& data, const std::string& text) {
    ManagedObjectContext& context = data.viewContext();
    std::string uri = text;
    if (text.starts_with('p') && numberFromText(std::string_view(text).substr(1))) {
        uri = "x-coredata://" + data.persistentStoreCoordinator().store()->uuid() + "/" +
              std::string(Object::kEntityName) + "/" + text;
    } else if (!text.starts_with("x-coredata:")) {
        return nullptr;
    }
    ManagedObject* object = context.objectWithUri(uri);
    if (!object || object->entity().name() != Object::kEntityName ||
        static_cast<Object*>(object)->removed()) {
        throw CommandFailure(translated("there is nothing with the identifier %@", text));
    }
    return static_cast<Object*>(object);
}

GUser* accountFromIdentifier(GSData& data, const std::string& text) {
    const auto accounts = accountsInOrder(data.viewContext());
    const auto found = std::ranges::find_if(accounts, [&](const GUser* account) {
        return shortIdentifier(*account) == text || data.viewContext().uriRepresentation(*account) == text;
    });
    return found == accounts.end() ? nullptr : *found;
}

template <class Object>
std::vector<Object*> named(const std::vector<Object*>& objects, const std::u16string& words, bool isWhole) {
    std::vector<Object*> found;
    std::ranges::copy_if(objects, std::back_inserter(found), [&](const Object* object) {
        const std::u16string name = foldedWords(object->name().value_or(u""));
        return isWhole ? name == words : name.find(words) != name.npos;
    });
    return found;
}

std::string candidateText(const GTask& task) {
    const GList* list = task.list();
    if (!list) return quotedName(task.name());
    return translated("%1$@ in %2$@", quotedName(task.name()), quotedName(list->name()));
}
std::string candidateText(const GList& list) { return nameWithAccount(list); }
std::string candidateText(const GUser& account) { return quotedName(account.name()); }

template <class Object>
[[noreturn]] void refuseAmbiguous(const std::string& name, const std::vector<Object*>& candidates) {
    constexpr std::size_t kMost = 20;
    for (std::size_t i = 0; i < std::min(candidates.size(), kMost); ++i) {
        say("  " + shortIdentifier(*candidates[i]) + "  " + candidateText(*candidates[i]));
    }
    throw CommandFailure(
        translated("\"%1$@\" fits %2$d; name one by its identifier", name, candidates.size()));
}

/// The one object of a name; null when none fits.
template <class Object>
Object* onlyOneNamed(const std::vector<Object*>& objects, const std::string& name, bool allowsPieces) {
    const std::u16string words = foldedWords(textFromUtf8(name));
    if (words.empty()) return nullptr;
    for (const bool isWhole : {true, false}) {
        if (!isWhole && !allowsPieces) break;
        const std::vector<Object*> found = named(objects, words, isWhole);
        if (found.size() == 1) return found.front();
        if (!found.empty()) refuseAmbiguous(name, found);
    }
    return nullptr;
}

// Names go before numbers here: what a list is called stays, its place may change.
template <class Object>
Object* objectByNameOrNumber(const std::vector<Object*>& objects, const std::string& name) {
    constexpr bool kPieces = true;
    if (Object* object = onlyOneNamed(objects, name, !kPieces)) return object;
    if (const auto number = numberFromText(name)) {
        return *number >= 1 && *number <= objects.size() ? objects[*number - 1] : nullptr;
    }
    return onlyOneNamed(objects, name, kPieces);
}

bool isShown(const GTask& task) { return task.list() && !task.list()->removed(); }

std::vector<GTask*> liveTasks(GSData& data) {
    FetchRequest request;
    request.predicate = fixedPredicate(u"removed == NO AND list.removed == NO");
    request.sortDescriptors = {{"list.displayOrder"}, {"displayOrder"}};
    request.relationshipKeyPathsForPrefetching = {"list"};
    return data.viewContext().fetch<GTask>(std::move(request));
}

GTask* taskFromNumber(GSData& data, std::size_t number) {
    const std::optional<std::string> uri = LastListing::ofContainer().identifier(number);
    if (!uri) return nullptr;
    auto* task = static_cast<GTask*>(data.viewContext().objectWithUri(*uri));
    if (!task || task->removed() || !isShown(*task)) {
        throw CommandFailure(
            translated("task %@ of the last listing is gone; list again", std::to_string(number)));
    }
    return task;
}

}  // namespace

GTask& taskNamed(GSData& data, const std::string& name, Prefer prefer) {
    if (auto* task = objectFromIdentifier<GTask>(data, name)) return *task;
    const std::optional<std::size_t> number = numberFromText(name);
    if (number) {
        if (GTask* task = taskFromNumber(data, *number)) return *task;
    }
    const std::vector<GTask*> tasks = liveTasks(data);
    std::vector<GTask*> preferred = tasks;
    std::erase_if(preferred,
                  [&](const GTask* task) { return task->completed() != (prefer == Prefer::kDoneTasks); });
    // A number never stands for a piece of a title: it may come from an older listing.
    for (const auto& candidates : {preferred, tasks}) {
        if (GTask* task = onlyOneNamed(candidates, name, !number)) return *task;
    }
    if (number) throw CommandFailure(translated("the last listing has no task %@", name));
    throw CommandFailure(translated("there is no task \"%@\"", name));
}

std::vector<GTask*> tasksNamed(GSData& data, const std::vector<std::string>& names, Prefer prefer) {
    std::vector<GTask*> tasks;
    for (const std::string& name : names) {
        GTask& task = taskNamed(data, name, prefer);
        if (std::ranges::find(tasks, &task) == tasks.end()) tasks.push_back(&task);
    }
    return tasks;
}

GList& listNamed(GSData& data, const std::string& name, const GUser* account) {
    std::vector<GList*> lists = account ? account->orderedLists() : listsInOrder(data.viewContext());
    GList* list = objectByNameOrNumber(lists, name);
    if (!list) list = objectFromIdentifier<GList>(data, name);
    if (list) return *list;
    throw CommandFailure(
        translated("there is no list \"%1$@\"; make it with: corvane list add \"%1$@\"", name));
}

GUser& accountNamed(GSData& data, const std::string& name) {
    GUser* account = objectByNameOrNumber(accountsInOrder(data.viewContext()), name);
    if (!account) account = accountFromIdentifier(data, name);
    if (account) return *account;
    throw CommandFailure(
        translated("there is no account \"%1$@\"; make it with: corvane account add \"%1$@\"", name));
}

std::string shortIdentifier(const ManagedObject& object) {
    return "p" + std::to_string(object.objectID().key);
}

std::string shownText(std::u16string_view text) { return utf8FromText(terminalText(text)); }

std::string quotedName(std::optional<std::u16string_view> name) {
    return name && !name->empty() ? translated("\"%@\"", shownText(*name)) : shownName(name);
}

std::string shownName(std::optional<std::u16string_view> name) {
    return name && !name->empty() ? shownText(*name) : translated("(untitled)");
}

std::string nameWithAccount(const GList& list) {
    if (!list.user()) return quotedName(list.name());
    return translated("%1$@ of %2$@", quotedName(list.name()), quotedName(list.user()->name()));
}

std::u16string titleFromArgument(const std::string& argument) {
    std::u16string title = titleFromText(textFromUtf8(argument));
    if (title.empty()) throw CommandFailure(translated("a name must not be empty"), kUsage);
    return title;
}

}  // namespace corvane
