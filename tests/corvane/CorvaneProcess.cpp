#include "CorvaneProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

namespace corvane {
namespace {

// Long enough for a loaded machine and a sanitized program; only a failing test waits for it.
constexpr int kPatienceInMilliseconds = 60'000;

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return ends;
}

void closeEnd(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

std::vector<std::string> variables(const ProcessEnvironment& environment) {
    ProcessEnvironment all{
        {"PATH", "/usr/bin:/bin"},
        {"LANG", "C.UTF-8"      },
        {"TZ",   "UTC"          },
        {"HOME", "/nonexistent" }
    };
    for (const auto& [name, value] : environment) all[name] = value;
    std::vector<std::string> result;
    for (const auto& [name, value] : all) result.push_back(name + "=" + value);
    return result;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

// @return false at the end of the output
bool readInto(int& descriptor, std::string& text) {
    char buffer[65536];
    const ssize_t size = read(descriptor, buffer, sizeof buffer);
    if (size > 0) {
        text.append(buffer, static_cast<std::size_t>(size));
        return true;
    }
    closeEnd(descriptor);
    return false;
}

}  // namespace

CorvaneProcess::CorvaneProcess(const std::vector<std::string>& arguments,
                               const ProcessEnvironment& environment) {
    std::vector<std::string> words{CORVANE_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> settings = variables(environment);
    const std::vector<char*> argv = pointers(words);
    const std::vector<char*> envp = pointers(settings);
    const auto in = makePipe();
    const auto out = makePipe();
    const auto err = makePipe();
    process_ = fork();
    if (process_ < 0) throw std::runtime_error("no process");
    if (process_ == 0) {
        ::signal(SIGPIPE, SIG_DFL);
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        execve(CORVANE_PROGRAM, argv.data(), envp.data());
        _exit(127);
    }
    for (const int end : {in[0], out[1], err[1]}) close(end);
    input_ = in[1];
    outputEnd_ = out[0];
    errorsEnd_ = err[0];
}

CorvaneProcess::~CorvaneProcess() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    for (int* end : {&input_, &outputEnd_, &errorsEnd_}) closeEnd(*end);
}

void CorvaneProcess::giveInput(const std::string& text) {
    ::signal(SIGPIPE, SIG_IGN);  // one that ended already takes none
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t size = write(input_, text.data() + at, text.size() - at);
        if (size <= 0) break;
        at += static_cast<std::size_t>(size);
    }
    closeEnd(input_);
}

bool CorvaneProcess::readSome() {
    pollfd ends[] = {
        {outputEnd_, POLLIN, 0},
        {errorsEnd_, POLLIN, 0}
    };
    if (outputEnd_ < 0 && errorsEnd_ < 0) return false;
    if (poll(ends, std::size(ends), kPatienceInMilliseconds) <= 0) throw std::runtime_error("no output");
    if (ends[0].revents != 0) readInto(outputEnd_, output_);
    if (ends[1].revents != 0) readInto(errorsEnd_, errors_);
    return true;
}

std::optional<std::string> CorvaneProcess::readLine() {
    std::size_t end = 0;
    while ((end = output_.find('\n')) == std::string::npos) {
        if (!readSome()) return std::nullopt;
    }
    const std::string line = output_.substr(0, end);
    output_.erase(0, end + 1);
    return line;
}

void CorvaneProcess::closeOutput() { closeEnd(outputEnd_); }

void CorvaneProcess::signal(int number) { kill(process_, number); }

void CorvaneProcess::waitForEnd() {
    closeEnd(input_);
    while (readSome()) {
    }
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

ProcessResult runCorvane(const std::vector<std::string>& arguments, const ProcessEnvironment& environment,
                         const std::string& input) {
    CorvaneProcess process(arguments, environment);
    process.giveInput(input);
    process.waitForEnd();
    return {process.output(), process.errors(), process.exitCode()};
}

std::vector<std::string> CorvaneAt::arguments(const std::vector<std::string>& command) const {
    std::vector<std::string> words{"--container", container_.string(), "--now", now_};
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

std::string CorvaneAt::output(const std::vector<std::string>& command,
                              const ProcessEnvironment& environment) const {
    const ProcessResult result = run(command, environment);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
    return result.output;
}

}  // namespace corvane
