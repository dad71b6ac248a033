#include "apps/corvane/Program.h"

#include <cerrno>
#include <cstdio>

namespace corvane {

GSData& Program::launchedContainer() {
    GSData& data = GSData::sharedInstance();
    data.launch();
    return data;
}

GSData& Program::store() {
    GSData& data = launchedContainer();
    if (data.loadError()) throw CommandFailure(data.loadError()->message);
    return data;
}

void Program::save() {
    if (const std::optional<StoreError> error = store().viewContext().save())
        throw CommandFailure(error->message);
}

void Program::print(std::string_view utf8) {
    if (readerHasGone_ || utf8.empty()) return;
    if (std::fwrite(utf8.data(), 1, utf8.size(), stdout) == utf8.size()) return;
    readerHasGone_ = errno == EPIPE;
    outputFailed_ = !readerHasGone_;
}

void Program::printLine(std::string_view utf8) {
    print(utf8);
    print("\n");
}

void Program::flush() {
    if (!readerHasGone_ && std::fflush(stdout) != 0) {
        readerHasGone_ = errno == EPIPE;
        outputFailed_ = !readerHasGone_;
    }
    if (outputFailed_) throw CommandFailure("the output could not be written");
}

}  // namespace corvane
