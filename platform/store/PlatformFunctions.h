// Functions that the platform registers with every store and that triggers of its stores call.
#pragma once

struct sqlite3;

namespace corvane {

/// Triggers of derived attributes fail without these functions, and with them every write to their table.
/// NSCoreDataNow() is the current date in seconds since 2001; the others, whose work the platform keeps to
/// itself, return NULL.
void registerPlatformFunctions(sqlite3* database);

}  // namespace corvane
