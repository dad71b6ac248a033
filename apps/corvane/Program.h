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

    /// The container with its store open, for a command that only shows: what is not there is not made.
    /// @throws CommandFailure when there is no store to show
    GSData& store();
    /// The container with its store open, for a command that changes something: container and store are made
    /// where there is none yet.
    /// @throws CommandFailure when there is no store to work with
    GSData& storeToChange();
    /// The container, launched; nothing is made, and its store may be missing (GSData::loadError).
    GSData& launchedContainer();
    /// Saves what the command changed. @throws CommandFailure; nothing was written then
    void save();

    /// Writes a text for people to standard output, in the character set of the user's locale. Nothing is
    /// written once the reader has gone.
    void print(std::string_view utf8);
    void printLine(std::string_view utf8);
    /// Writes a line of data (JSON, HTML), which is UTF-8 whatever the locale.
    void printData(std::string_view utf8);
    /// @throws CommandFailure when something printed could not be written, unless the reader has gone
    void flush();
    bool readerHasGone() const { return readerHasGone_; }

    /// What a command that ran without a failure ends with.
    ExitCode exitCode = kDone;

  private:
    void write(std::string_view bytes);

    bool outputFailed_ = false;
    bool readerHasGone_ = false;
};

}  // namespace corvane
