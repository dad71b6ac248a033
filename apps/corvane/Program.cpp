#include "apps/corvane/Program.h"

#include <cerrno>
#include <cstdio>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/TerminalText.h"
#include "apps/host/ProgramStore.h"

namespace corvane {
namespace {

GSData& withStore(GSData& data) {
    if (const std::optional<std::string> problem = storeProblem(data)) throw CommandFailure(*problem);
    return data;
}

}  // namespace

GSData& Program::launchedContainer() {
    GSData& data = GSData::sharedInstance();
    launchForShowing(data);
    return data;
}

GSData& Program::store() { return withStore(launchedContainer()); }

GSData& Program::storeToChange() {
    GSData& data = GSData::sharedInstance();
    launchForChanging(data);
    return withStore(data);
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
    if (outputFailed_) throw CommandFailure(translated("the output could not be written"));
}

}  // namespace corvane
