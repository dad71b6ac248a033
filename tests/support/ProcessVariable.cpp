#include "support/ProcessVariable.h"

#include <cstdlib>

namespace corvane {
namespace {

void setVariable(const std::string& name, const char* value) {
    if (value == nullptr) {
        unsetenv(name.c_str());
    } else {
        setenv(name.c_str(), value, 1);
    }
}

}  // namespace

ProcessVariable::ProcessVariable(const char* name, const char* value) : name_(name) {
    if (const char* previous = std::getenv(name)) previous_ = previous;
    setVariable(name_, value);
}

ProcessVariable::~ProcessVariable() { setVariable(name_, previous_ ? previous_->c_str() : nullptr); }

}  // namespace corvane
