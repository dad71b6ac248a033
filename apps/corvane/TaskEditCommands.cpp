// `corvane task edit`, and a verb for each field that has words of its own: due, repeat, alert, region.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/NotesEditor.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TaskCommands.h"
#include "apps/corvane/TaskFieldOptions.h"
#include "apps/host/AlertWords.h"
#include "apps/host/RepeatWords.h"
#include "apps/host/TaskDescription.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

struct EditOptions {
    std::string task;
    std::optional<std::string> title;
    TaskFieldOptions fields;
};

std::string dueSentence(const GTask& task) {
    const std::u16string due = dueInWords(task);
    if (due.empty()) return translated("%@ has no due date", quotedName(task.name()));
    return translated("%1$@ is due %2$@", quotedName(task.name()), shownText(due));
}

std::string repeatSentence(const GTask& task) {
    if (task.alertRepeat() == kNoRepeat) return translated("%@ does not repeat", quotedName(task.name()));
    return translated("%1$@ repeats %2$@, due %3$@", quotedName(task.name()),
                      shownText(repeatInWords(repeatOfTask(task))), shownText(dueInWords(task)));
}

std::string alertSentence(const GTask& task) {
    if (!task.alertEnabled() || !task.alertDate())
        return translated("%@ has no alert", quotedName(task.name()));
    return translated("Alert for %1$@: %2$@", quotedName(task.name()),
                      shownText(alertInWords(*task.alertDate(), task.dueDate())));
}

void editNotes(GTask& task) {
    const std::optional<std::string> notes = editedText(utf8FromText(task.notes().value_or(u"")));
    if (!notes) return;
    setNotesText(task, textFromUtf8(*notes));
    task.updateLastModified();
}

void editTask(Program& program, const EditOptions& options) {
    GTask& task = changeable(taskNamed(program.store(), options.task));
    if (options.title) {
        task.setName(titleFromArgument(*options.title));
        task.updateLastModified();
    }
    if (!options.title && options.fields.isEmpty()) editNotes(task);
    applyFields(task, options.fields);
    const bool isChanged = task.hasChanges();
    program.save();
    printChangedTask(program, task,
                     translated(isChanged ? textKey("Changed %@") : textKey("Nothing changed in %@"),
                                quotedName(task.name())));
}

struct FieldVerb {
    const char* verb;
    const char* help;
    const char* value;
    std::optional<std::string> TaskFieldOptions::*field;
    std::string (*sentence)(const GTask&);
};
constexpr FieldVerb kFieldVerbs[] = {
    {"due",    textKey("Set when a task is due, or none"),  "DATE", &TaskFieldOptions::due,    dueSentence   },
    {"repeat", textKey("Set how a task repeats, or none"),  "RULE", &TaskFieldOptions::repeat, repeatSentence},
    {"alert",  textKey("Set when to be reminded, or none"), "WHEN", &TaskFieldOptions::alert,  alertSentence },
};

struct VerbOptions {
    std::string task;
    std::vector<std::string> words;
};

// Words come quoted or not: "corvane task due milk next monday".
void setField(Program& program, const FieldVerb& verb, const VerbOptions& options) {
    std::string text;
    for (const std::string& word : options.words) text += (text.empty() ? "" : " ") + word;
    TaskFieldOptions fields;
    fields.*verb.field = text;
    GTask& task = changeable(taskNamed(program.store(), options.task));
    applyFields(task, fields);
    program.save();
    printChangedTask(program, task, verb.sentence(task));
}

struct RegionOptions {
    std::string task;
    int kind = 1;
    double latitude = 0;
    double longitude = 0;
    double radius = 100;
    double accuracy = 0;
    std::string description;
    bool clear = false;
};

void setRegion(Program& program, const RegionOptions& options) {
    GTask& task = changeable(taskNamed(program.store(), options.task));
    if (options.clear) {
        task.setRegionAlert(0, 0, 0, 0, 0, std::nullopt);
    } else {
        task.setRegionAlert(options.kind, options.latitude, options.longitude, options.radius,
                            options.accuracy, titleFromArgument(options.description));
    }
    task.updateLastModified();
    program.save();
    const char* const sentence =
        options.clear ? textKey("%@ has no place alert") : textKey("%@ has a place alert");
    printChangedTask(program, task, translated(sentence, quotedName(task.name())));
}

void addRegionCommand(CLI::App& noun, Program& program) {
    const auto options = std::make_shared<RegionOptions>();
    CLI::App& command =
        *noun.add_subcommand("region", translated("Set the place that alerts, or take it away"));
    command.add_option("TASK", options->task, translated("A task"))->required();
    CLI::Option* latitude = command.add_option("--lat", options->latitude, translated("Degrees north"));
    CLI::Option* longitude = command.add_option("--long", options->longitude, translated("Degrees east"));
    CLI::Option* place =
        command.add_option("--description", options->description, translated("Name of the place"));
    latitude->check(CLI::Range(-90.0, 90.0))->needs(longitude, place);
    longitude->check(CLI::Range(-180.0, 180.0))->needs(latitude, place);
    place->needs(latitude, longitude);
    command.add_option("--radius", options->radius, translated("Metres (100)"))
        ->check(CLI::NonNegativeNumber);
    command.add_option("--accuracy", options->accuracy, translated("Metres (0)"))
        ->check(CLI::NonNegativeNumber);
    command
        .add_option("--kind", options->kind,
                    translated("Kind of alert, as the main application numbers it (1)"))
        ->check(CLI::Range(1, 100));
    CLI::Option* clear =
        command.add_flag("--clear", options->clear, translated("No place alert"))->excludes(latitude);
    command.callback([&program, options, clear, latitude] {
        if (clear->empty() && latitude->empty()) {
            throw CommandFailure(translated("--lat or --clear is required"), kUsage);
        }
        setRegion(program, *options);
    });
}

void addFieldVerb(CLI::App& noun, Program& program, const FieldVerb& verb) {
    const auto options = std::make_shared<VerbOptions>();
    CLI::App& command = *noun.add_subcommand(verb.verb, translated(verb.help));
    command.add_option("TASK", options->task, translated("A task"))->required();
    command.add_option(verb.value, options->words, translated("In words"))->required();
    command.callback([&program, &verb, options] { setField(program, verb, *options); });
}

}  // namespace

void addTaskEditCommands(CLI::App& noun, Program& program) {
    const auto options = std::make_shared<EditOptions>();
    CLI::App& edit =
        *noun.add_subcommand("edit", translated("Change a task; without options, its notes in $EDITOR"));
    edit.add_option("TASK", options->task, translated("A task"))->required();
    edit.add_option("--title", options->title, translated("A new title"))->option_text("TEXT");
    addFieldOptions(edit, options->fields);
    edit.callback([&program, options] { editTask(program, *options); });
    for (const FieldVerb& verb : kFieldVerbs) addFieldVerb(noun, program, verb);
    addRegionCommand(noun, program);
}

}  // namespace corvane
