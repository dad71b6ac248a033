// `corvane complete -- WORD...`: what may stand in place of the last word, for the completion of shells.
//
// One candidate a line: the word, a tab, what it is. A line without a tab tells the shell to offer files
// (":files") or folders (":directories") of its own. Nothing is made and nothing written; where there is no
// store there are no names.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandPlace.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/DateWords.h"
#include "apps/host/Places.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDirectories.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

constexpr std::size_t kMostTasks = 200;
constexpr std::size_t kLongestName = 60;  ///< cells; a longer one nobody wants on a command line

struct Candidate {
    std::string word;
    std::string meaning;
    std::string name = {};  ///< what people type to find it, where that is another word
};
using Candidates = std::vector<Candidate>;

// Whether a name, typed as it is, can only mean what is called so: it needs one line, and must not look like
// an option, a number or an identifier.
bool isWord(const std::u16string& name) {
    const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
    if (name.empty() || name.front() == u'-' || name.front() == u' ' || name.back() == u' ') return false;
    const std::size_t digits = name.front() == u'p' ? 1 : 0;
    if (std::all_of(name.begin() + static_cast<std::ptrdiff_t>(digits), name.end(), isDigit)) return false;
    return !name.starts_with(u"x-coredata:") && displayWidth(name) <= kLongestName &&
           name == terminalText(name);
}

// Objects by name, and by identifier where the name is no word or another one's as well.
template <class Object>
Candidates candidatesNamed(const std::vector<Object*>& objects,
                           const std::function<std::string(const Object&)>& meaning) {
    const auto nameOf = [](const Object* object) { return std::u16string(object->name().value_or(u"")); };
    std::map<std::u16string, int> uses;
    for (const Object* object : objects) ++uses[foldedWords(nameOf(object))];
    Candidates candidates;
    for (const Object* object : objects) {
        const std::u16string name = nameOf(object);
        if (isWord(name) && uses[foldedWords(name)] == 1) {
            candidates.push_back({utf8FromText(name), meaning(*object)});
        } else {
            const std::string shown = utf8FromText(cutToWidth(terminalText(name), kLongestName));
            candidates.push_back(
                {shortIdentifier(*object), shown + ", " + meaning(*object), utf8FromText(name)});
        }
    }
    return candidates;
}

std::string nameToShow(const ManagedObject* owner, std::optional<std::u16string_view> name) {
    return owner && name ? shownText(*name) : std::string();
}

std::string placeOf(const GTask& task) {
    const GList* list = task.list();
    return nameToShow(list, list ? list->name() : std::nullopt);
}

std::string placeOf(const GList& list) {
    const GUser* account = list.user();
    return nameToShow(account, account ? account->name() : std::nullopt);
}

// Names that may begin with the text whatever its case and accents, told by their first letter alone: most
// tasks of a large store need no closer look then.
std::optional<Predicate> mayBeginWith(const std::u16string& typed) {
    constexpr char16_t kFirstBeyondAscii = 0x80;
    const std::u16string lower = foldedWords(typed);
    if (lower.empty() || lower.front() < u'a' || lower.front() > u'z') return std::nullopt;
    const auto letter = [](int unit) { return Value(std::u16string(1, static_cast<char16_t>(unit))); };
    const int upper = lower.front() - u'a' + u'A';
    return fixedPredicate(u"(name >= %@ && name < %@) || (name >= %@ && name < %@) || name >= %@",
                          {letter(lower.front()), letter(lower.front() + 1), letter(upper), letter(upper + 1),
                           letter(kFirstBeyondAscii)});
}

Candidates tasks(GSData& data, const CommandPlace& place) {
    const std::u16string typed = textFromUtf8(place.typed);
    const bool isDone = place.command->get_name() == "undone";
    std::vector<Predicate> conditions = {
        fixedPredicate(u"completed == %@ && removed == NO", {Value(isDone)})};
    if (const auto mayBegin = mayBeginWith(typed)) conditions.push_back(*mayBegin);
    if (!typed.empty()) conditions.push_back(fixedPredicate(u"name BEGINSWITH[cd] %@", {Value(typed)}));
    conditions.push_back(fixedPredicate(u"list.removed == NO"));
    FetchRequest request;
    request.predicate = andPredicateWithSubpredicates(conditions);
    request.fetchLimit = kMostTasks;
    request.relationshipKeyPathsForPrefetching = {"list"};
    std::vector<GTask*> found = data.viewContext().fetch<GTask>(std::move(request));
    std::ranges::sort(found, ObjectOrder({{"name"}}));
    return candidatesNamed<GTask>(found, [](const GTask& task) { return placeOf(task); });
}

Candidates lists(GSData& data, const CommandPlace&) {
    return candidatesNamed<GList>(listsInOrder(data.viewContext()),
                                  [](const GList& list) { return placeOf(list); });
}

Candidates accounts(GSData& data, const CommandPlace&) {
    return candidatesNamed<GUser>(accountsInOrder(data.viewContext()),
                                  [](const GUser&) { return std::string(); });
}

Candidates filters(GSData&, const CommandPlace&) {
    Candidates candidates;
    for (std::uint32_t filter = 0; filter < kListFilter; ++filter) {
        candidates.push_back({utf8FromText(GSData::filterLocalizedName(filter).value_or(u"")), ""});
    }
    return candidates;
}

Candidates settings(GSData&, const CommandPlace&) {
    Candidates candidates;
    for (const std::string& key : settingKeys()) candidates.push_back({key, ""});
    return candidates;
}

// What the arguments and options of that name take.
struct Source {
    const char* name;
    const char* instruction;
    Candidates (*candidates)(GSData&, const CommandPlace&);
};
constexpr Source kSources[] = {
    {"TASK",      nullptr,        tasks   },
    {"parent",    nullptr,        tasks   },
    {"after",     nullptr,        tasks   },
    {"LIST",      nullptr,        lists   },
    {"list",      nullptr,        lists   },
    {"ACCOUNT",   nullptr,        accounts},
    {"account",   nullptr,        accounts},
    {"filter",    nullptr,        filters },
    {"key",       nullptr,        settings},
    {"file",      ":files",       nullptr },
    {"output",    ":files",       nullptr },
    {"DIR",       ":directories", nullptr },
    {"container", ":directories", nullptr },
};

// An option that takes one of a few words has them in its type, as "TEXT:{auto,always,never}".
Candidates choices(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t begin = type.find('{');
    const std::size_t end = type.find('}', begin);
    if (begin == type.npos || end == type.npos) return {};
    Candidates candidates;
    for (const std::string& word : CLI::detail::split(type.substr(begin + 1, end - begin - 1), ',')) {
        candidates.push_back({word, ""});
    }
    return candidates;
}

// The shells hand over what is typed: a tilde or a variable in front stands as it is.
std::filesystem::path typedPath(const std::string& text) {
    const std::size_t end = std::min(text.find('/'), text.size());
    const std::string first = text.substr(0, end);
    if (first == "~") return homeDirectory().string() + text.substr(end);
    if (!first.starts_with('$')) return text;
    return processVariable(first.c_str() + 1).value_or(first) + text.substr(end);
}

class Completion {
  public:
    Completion(Program& program, CommandPlace place) : program_(program), place_(std::move(place)) {}

    void print() {
        if (place_.takesCommand) printCommands();
        if (place_.takesOption) printOptions();
        if (place_.value) printValues();
    }

  private:
    void printCommands() {
        for (const CLI::App* command : shownCommands(*place_.command)) {
            print({command->get_name(), command->get_description()});
        }
    }

    void printOptions() {
        for (const CLI::App* command = place_.command; command; command = command->get_parent()) {
            for (const CLI::Option* option : command->get_options()) {
                const bool isRepeated = command != place_.command && option == command->get_help_ptr();
                if (option->get_lnames().empty() || isRepeated) continue;
                print({"--" + option->get_lnames().front(), option->get_description()});
            }
        }
    }

    void printValues() {
        for (const Candidate& candidate : choices(*place_.value)) print(candidate);
        const auto source = std::ranges::find(kSources, place_.value->get_single_name(),
                                              [](const Source& candidate) { return candidate.name; });
        if (source == std::end(kSources)) return;
        if (source->instruction) return program_.printData(source->instruction);
        for (const Candidate& candidate : source->candidates(container(), place_)) print(candidate);
    }

    // The container that the words name, where they name one.
    GSData& container() {
        if (!place_.container.empty()) {
            program_.options.environment.container = typedPath(place_.container);
            setUpProgramEnvironment(program_.options.environment);
        }
        return program_.launchedContainer();
    }

    void print(const Candidate& candidate) {
        if (!begins(candidate.word) && !begins(candidate.name)) return;
        program_.printData(place_.fixed + candidate.word + "\t" + candidate.meaning);
    }

    bool begins(const std::string& word) const {
        const std::u16string typed = foldedWords(textFromUtf8(place_.typed));
        return !word.empty() && foldedWords(textFromUtf8(word)).starts_with(typed);
    }

    Program& program_;
    CommandPlace place_;
};

void complete(Program& program, const std::vector<std::string>& words) {
    Program typed;
    CLI::App app("", "corvane");
    std::vector<const char*> arguments = {"corvane"};
    for (const std::string& word : words) arguments.push_back(word.c_str());
    addCommandLine(app, typed, static_cast<int>(arguments.size()) - 1, arguments.data());
    Completion(program, commandPlace(app, words)).print();
}

}  // namespace

void addCompleteCommand(CLI::App& app, Program& program) {
    constexpr const char* kHidden = "";
    const auto words = std::make_shared<std::vector<std::string>>();
    CLI::App& command =
        *app.add_subcommand("complete", translated("Complete a command line"))->group(kHidden);
    command.add_option("WORD", *words, translated("The words of the line, the last one to be completed"));
    command.callback([&program, words] { complete(program, *words); });
}

}  // namespace corvane
