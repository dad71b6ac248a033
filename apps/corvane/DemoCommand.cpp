// `corvane demo`: makes a container with a demonstration.
#include <filesystem>
#include <memory>
#include <system_error>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/DemoContent.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

using Path = std::filesystem::path;

// What is there may be somebody's tasks.
void refuseStore(const Path& directory) {
    std::error_code error;
    if (std::filesystem::symlink_status(directory / kStoreFileName, error).type() !=
        std::filesystem::file_type::not_found) {
        throw CommandFailure(
            translated("there is a task store in %@ already; choose another folder", directory.string()));
    }
}

void makeDemonstration(Program& program, const Path& directory) {
    refuseStore(directory);
    if (!Environment::current().useContainerDirectory(directory)) {
        throw CommandFailure(translated("the folder %@ cannot be made", directory.string()));
    }
    addDemonstration(program.storeToChange().viewContext());
    program.save();
    program.printLine(translated("Made a demonstration. To see it: corvane --container %@ today",
                                 terminalUtf8(directory.string())));
}

}  // namespace

void addDemoCommand(CLI::App& app, Program& program) {
    const auto directory = std::make_shared<Path>();
    CLI::App& command =
        *app.add_subcommand("demo", translated("Make a folder with a store to try things out"));
    command.add_option("DIR", *directory, translated("The folder to make"))->required();
    command.callback([&program, directory] { makeDemonstration(program, *directory); });
}

}  // namespace corvane
