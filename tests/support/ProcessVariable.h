// A variable of the process's environment for a scope.
#pragma once

#include <optional>
#include <string>

namespace corvane {

class ProcessVariable {
  public:
    /// @param value  null unsets the variable
    ProcessVariable(const char* name, const char* value);
    ~ProcessVariable();
    ProcessVariable(const ProcessVariable&) = delete;
    ProcessVariable& operator=(const ProcessVariable&) = delete;

  private:
    std::string name_;
    std::optional<std::string> previous_;
};

}  // namespace corvane
