// A second process for tests: it shares files with the test, tells of its steps and dies without a farewell.
#pragma once

#include <sys/types.h>

#include <functional>

namespace corvane {

class OtherProcess {
  public:
    /// Tells the test of a step.
    using Progress = std::function<void()>;

    /// Runs `body` in a copy of this process, which then waits to be killed. What throws there ends it.
    explicit OtherProcess(const std::function<void(const Progress&)>& body);
    /// Kills it, wherever it is (SIGKILL), and waits for its end.
    ~OtherProcess();
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    /// Waits until it has told of that many steps more.
    /// @throws std::runtime_error when it ended before
    void waitForProgress(int steps = 1);

  private:
    pid_t process_ = -1;
    int steps_ = -1;
};

/// Runs `body` to its end in a process that is then killed: nothing that it opened gets closed in order.
void runInDyingProcess(const std::function<void()>& body);

}  // namespace corvane
