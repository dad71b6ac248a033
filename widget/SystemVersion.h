// What the widget's appearance asks about the system that it runs on.
#pragma once

namespace corvane {

/// Whether the device's system is version 10.0 or later, number by number.
bool iOS10();

}  // namespace corvane
