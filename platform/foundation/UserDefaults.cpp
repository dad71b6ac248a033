#include "platform/foundation/UserDefaults.h"

#include <utility>

namespace corvane {

UserDefaults::UserDefaults(std::filesystem::path file) : file_(std::move(file)) {}

}  // namespace corvane
