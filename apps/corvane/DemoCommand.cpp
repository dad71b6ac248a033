// `corvane demo`: makes a container with a demonstration.
#include <filesystem>
#include <memory>
#include <system_error>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
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
        throw CommandFailure("there is a task store in " + directory.string() +
                             " already; choose another folder");
    }
}

void makeDemonstration(Program& program, const Path& directory) {
    refuseStore(directory);
    if (!Environment::current().useContainerDirectory(directory)) {
        throw CommandFailure("the folder " + directory.string() + " cannot be made");
    }
    addDemonstration(program.storeToChange().viewContext());
    program.save();
    program.printLine("Made a demonstration. To see it: corvane --container " +
                      terminalUtf8(directory.string()) + " today");
}

}  // namespace

void addDemoCommand(CLI::App& app, Program& program) {
    const auto directory = std::make_shared<Path>();
    CLI::App& command = *app.add_subcommand("demo", "Make a folder with a store to try things out");
    command.add_option("DIR", *directory, "The folder to make")->required();
    command.callback([&program, directory] { makeDemonstration(program, *directory); });
}

}  // namespace corvane
