#include "model/CorvaneUserDefaults.h"

#include "platform/foundation/Environment.h"

namespace corvane {

UserDefaults& corvaneUserDefaults() { return *Environment::current().userDefaults; }

}  // namespace corvane
