// A listing of tasks: numbered lines for people, an array of objects as JSON. The numbers are remembered, so
// that the next command can name a task by its number.
#pragma once

#include <string>
#include <vector>

#include "apps/corvane/Program.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/TerminalStyle.h"

namespace corvane {

struct ListedTask {
    const GTask* task = nullptr;
    std::size_t depth = 0;  ///< how far its line is indented
};

class TaskListing {
  public:
    TaskListing(Program& program, GSData& data) : program_(program), data_(data) {}

    void addHeading(const std::string& heading);
    void add(const ListedTask& entry);
    /// Prints what was added and remembers its numbers.
    void print(const std::string& whenEmpty);

  private:
    void addLine(const ListedTask& entry);

    Program& program_;
    GSData& data_;
    TerminalStyle style_ = TerminalStyle::ofOutput();
    std::string lines_;
    Json json_ = Json::array();
    std::vector<std::string> identifiers_;
};

}  // namespace corvane
