#include "widget/SystemVersion.h"

#include "platform/foundation/Environment.h"

namespace corvane {

bool iOS10() { return compareVersionsNumerically(Environment::current().device.systemVersion, u"10.0") >= 0; }

}  // namespace corvane
