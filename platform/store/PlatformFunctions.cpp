#include "platform/store/PlatformFunctions.h"

#include <sqlite3.h>

#include "platform/foundation/Environment.h"

namespace corvane {

namespace {

void returnNow(sqlite3_context* context, int, sqlite3_value**) {
    sqlite3_result_double(context, now().time_since_epoch().count());
}

void returnNull(sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_null(context); }

}  // namespace

void registerPlatformFunctions(sqlite3* database) {
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_INNOCUOUS;
    constexpr int kArguments = 5;
    constexpr const char* kUnknownToUs[] = {
        "NSCoreDataDATriggerUpdatedAffectedObjectValue",
        "NSCoreDataDATriggerInsertUpdatedAffectedObjectValue",
        "NSCoreDataTriggerUpdateAffectedObjectValue",
    };
    sqlite3_create_function(database, "NSCoreDataNow", 0, kFlags, nullptr, returnNow, nullptr, nullptr);
    for (const char* name : kUnknownToUs) {
        sqlite3_create_function(database, name, kArguments, kFlags, nullptr, returnNull, nullptr, nullptr);
    }
}

}  // namespace corvane
