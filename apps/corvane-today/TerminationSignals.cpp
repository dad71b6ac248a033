#include "apps/corvane-today/TerminationSignals.h"

#include <fcntl.h>

#include <cerrno>
#include <csignal>

namespace corvane {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t pipeEnd = -1;

// Little else is safe here than to write.
extern "C" void tellEventLoop(int) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(static_cast<int>(pipeEnd), &byte, sizeof byte);
    errno = error;
}

// What the program was started to ignore, as by nohup, it goes on to ignore.
void answer(int signal, void (*handler)(int)) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) return;
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    readEnd_ = FileDescriptor(ends[0]);
    writeEnd_ = FileDescriptor(ends[1]);
    notifier_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        Q_EMIT received();
    });
    pipeEnd = ends[1];
    for (const int signal : kSignals) answer(signal, tellEventLoop);
}

TerminationSignals::~TerminationSignals() {
    for (const int signal : kSignals) answer(signal, SIG_DFL);
}

}  // namespace corvane
