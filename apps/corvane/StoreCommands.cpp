// `corvane store check` and `store repair`.
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/host/StoreCheck.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

const char* nameOf(FaultKind kind) {
    switch (kind) {
        case FaultKind::kReference:
            return textKey("reference");
        case FaultKind::kDueDate:
            return textKey("due date");
        case FaultKind::kCompletion:
            return textKey("completion");
        case FaultKind::kRepeat:
            return textKey("repeat");
        case FaultKind::kDefault:
            return textKey("default");
        case FaultKind::kOrder:
            return textKey("order");
    }
    return "";
}

void printFaults(Program& program, const std::vector<StoreFault>& faults, const std::string& whenNone) {
    if (program.options.json) {
        Json json = Json::array();
        for (const StoreFault& fault : faults) {
            json.push_back({
                {"kind", nameOf(fault.kind)      },
                {"text", utf8FromText(fault.text)}
            });
        }
        return program.printData(jsonText(json));
    }
    if (faults.empty()) return program.printLine(whenNone);
    for (const StoreFault& fault : faults) {
        program.printLine(translated("%1$@: %2$@", translated(nameOf(fault.kind)), shownText(fault.text)));
    }
}

ManagedObjectContext& readableStore(Program& program) {
    ManagedObjectContext& context = program.store().viewContext();
    if (const auto reason = unreadableReason(context)) throw CommandFailure(*reason);
    return context;
}

void check(Program& program) {
    const std::vector<StoreFault> faults = checkStore(readableStore(program));
    printFaults(program, faults, translated("The store is sound."));
    if (!faults.empty()) program.exitCode = kFailed;
}

void repair(Program& program) {
    ManagedObjectContext& context = readableStore(program);
    const std::vector<StoreFault> mended = repairStore(context);
    program.save();
    printFaults(program, mended, translated("The store is sound; nothing was to mend."));
    const std::vector<StoreFault> left = checkStore(context);
    if (left.empty()) return;
    for (const StoreFault& fault : left) say(translated("left: %@", shownText(fault.text)));
    program.exitCode = kFailed;
}

}  // namespace

void addStoreCommands(CLI::App& app, Program& program) {
    CLI::App& noun = *app.add_subcommand("store", translated("Check and repair the store"));
    noun.require_subcommand(1);
    noun.add_subcommand("check", translated("Say what is unsound; exit code 1 when something is"))
        ->callback([&program] { check(program); });
    noun.add_subcommand("repair", translated("Mend what is unsound and say what was done"))
        ->callback([&program] { repair(program); });
}

}  // namespace corvane
