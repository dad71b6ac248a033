// The program itself in a process of its own: arguments and environment in, output and exit code out.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Variables beside a small fixed environment (UTF-8 locale, UTC, a home that is not there).
using ProcessEnvironment = std::map<std::string, std::string>;

class CorvaneProcess {
  public:
    explicit CorvaneProcess(const std::vector<std::string>& arguments,
                            const ProcessEnvironment& environment = {});
    /// Kills it when it still runs.
    ~CorvaneProcess();
    CorvaneProcess(const CorvaneProcess&) = delete;
    CorvaneProcess& operator=(const CorvaneProcess&) = delete;

    /// Writes to its standard input and ends that.
    void giveInput(const std::string& text);
    /// The next line of standard output without its end; none at the end of the output.
    /// @throws std::runtime_error when none comes for long
    std::optional<std::string> readLine();
    /// Stops reading its output, as a reader that goes away.
    void closeOutput();
    void signal(int number);
    /// The rest of both outputs, and how it ended.
    void waitForEnd();

    const std::string& output() const { return output_; }
    const std::string& errors() const { return errors_; }
    /// 128 and the signal's number for one that a signal ended.
    int exitCode() const { return exitCode_; }

  private:
    bool readSome();

    pid_t process_ = -1;
    int input_ = -1;
    int outputEnd_ = -1;
    int errorsEnd_ = -1;
    std::string output_;  ///< not read by readLine yet
    std::string errors_;
    int exitCode_ = -1;
};

struct ProcessResult {
    std::string output;
    std::string errors;
    int exitCode = -1;
};

/// Runs the program to its end.
ProcessResult runCorvane(const std::vector<std::string>& arguments,
                         const ProcessEnvironment& environment = {}, const std::string& input = {});

/// The program over one container and one clock.
class CorvaneAt {
  public:
    explicit CorvaneAt(std::filesystem::path container, std::string now = "2024-03-05T12:00:00Z")
        : container_(std::move(container)), now_(std::move(now)) {}

    std::vector<std::string> arguments(const std::vector<std::string>& command) const;
    ProcessResult run(const std::vector<std::string>& command, const ProcessEnvironment& environment = {},
                      const std::string& input = {}) const {
        return runCorvane(arguments(command), environment, input);
    }
    /// The output of a command that must succeed without a word on standard error.
    std::string output(const std::vector<std::string>& command,
                       const ProcessEnvironment& environment = {}) const;

  private:
    std::filesystem::path container_;
    std::string now_;
};

}  // namespace corvane
