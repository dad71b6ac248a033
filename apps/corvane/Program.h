// What the commands share: the global options, the store, the output.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "apps/host/ProgramEnvironment.h"
#include "model/GSData.h"

namespace corvane {

enum ExitCode : int { kDone = 0, kFailed = 1, kUsage = 2 };

/// Ends a command: one line on standard error and an exit code.
class CommandFailure : public std::runtime_error {
  public:
    explicit CommandFailure(const std::string& message, ExitCode exitCode = kFailed)
        : std::runtime_error(message), exitCode_(exitCode) {}
    ExitCode exitCode() const { return exitCode_; }

  private:
    ExitCode exitCode_;
};

class Program {
  public:
    struct Options {
        ProgramOptions environment;
        bool json = false;
    };
    Options options;

    /// The container with its store open.
    /// @throws CommandFailure when there is no store to work with
    GSData& store();
    /// The container, launched; its store may be missing (GSData::loadError).
    GSData& launchedContainer();
    /// Saves what the command changed. @throws CommandFailure; nothing was written then
    void save();

    /// Writes to standard output. Nothing is written once the reader has gone.
    void print(std::string_view utf8);
    void printLine(std::string_view utf8);
    /// @throws CommandFailure when something printed could not be written, unless the reader has gone
    void flush();

    /// What a command that ran without a failure ends with.
    ExitCode exitCode = kDone;

  private:
    bool outputFailed_ = false;
    bool readerHasGone_ = false;
};

}  // namespace corvane
