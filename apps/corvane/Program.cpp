#include "apps/corvane/Program.h"

#include <cerrno>
#include <cstdio>

#include "apps/corvane/TerminalText.h"
#include "apps/host/StoreProblem.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

GSData& launched(bool createsMissingStore) {
    GSData& data = GSData::sharedInstance();
    for (PersistentStoreDescription& description : data.persistentStoreDescriptions()) {
        description.createsMissingStore = createsMissingStore;
    }
    data.launch();
    return data;
}

GSData& withStore(GSData& data) {
    if (const std::optional<std::string> problem = storeProblem(data)) throw CommandFailure(*problem);
    return data;
}

}  // namespace

GSData& Program::launchedContainer() {
    constexpr bool kCreatesMissingStore = false;
    return launched(kCreatesMissingStore);
}

GSData& Program::store() { return withStore(launchedContainer()); }

GSData& Program::storeToChange() {
    constexpr bool kCreatesMissingStore = true;
    Environment& environment = Environment::current();
    if (environment.containerDirectory) {
        const std::filesystem::path directory = *environment.containerDirectory;
        environment.useContainerDirectory(directory);
    }
    // One that was opened for showing has to look again, now that it may make the store.
    GSData& data = GSData::sharedInstance();
    if (data.loadError()) data.setLaunched(false);
    return withStore(launched(kCreatesMissingStore));
}

void Program::save() {
    if (const std::optional<StoreError> error = store().viewContext().save())
        throw CommandFailure(error->message);
}

void Program::write(std::string_view bytes) {
    if (readerHasGone_ || bytes.empty()) return;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size()) return;
    readerHasGone_ = errno == EPIPE;
    outputFailed_ = !readerHasGone_;
}

void Program::print(std::string_view utf8) { write(inCharacterSetOfLocale(utf8)); }

void Program::printLine(std::string_view utf8) {
    print(utf8);
    write("\n");
}

void Program::printData(std::string_view utf8) {
    write(utf8);
    write("\n");
}

void Program::flush() {
    if (!readerHasGone_ && std::fflush(stdout) != 0) {
        readerHasGone_ = errno == EPIPE;
        outputFailed_ = !readerHasGone_;
    }
    if (outputFailed_) throw CommandFailure("the output could not be written");
}

}  // namespace corvane
