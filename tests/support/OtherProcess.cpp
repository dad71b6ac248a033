#include "support/OtherProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace corvane {
namespace {

[[noreturn]] void runAndWait(const std::function<void(const OtherProcess::Progress&)>& body, int steps) {
    try {
        body([steps] {
            if (write(steps, "", 1) != 1) _exit(EXIT_FAILURE);
        });
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "in the other process: %s\n", failure.what());
        _exit(EXIT_FAILURE);
    }
    while (true) pause();
}

}  // namespace

OtherProcess::OtherProcess(const std::function<void(const Progress&)>& body) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ < 0) throw std::runtime_error("no process");
    if (process_ == 0) {
        close(ends[0]);
        runAndWait(body, ends[1]);
    }
    close(ends[1]);
    steps_ = ends[0];
}

OtherProcess::~OtherProcess() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    close(steps_);
}

void OtherProcess::waitForProgress(int steps) {
    char step;
    for (int i = 0; i < steps; ++i) {
        if (read(steps_, &step, 1) != 1) throw std::runtime_error("the other process ended too early");
    }
}

void runInDyingProcess(const std::function<void()>& body) {
    OtherProcess process([&](const OtherProcess::Progress& progress) {
        body();
        progress();
    });
    process.waitForProgress();
}

}  // namespace corvane
