#include "platform/foundation/Date.h"

namespace corvane {

Date ReferenceClock::now() noexcept {
    // Taken apart before it becomes a double: seconds since 2001 leave more bits for the fraction.
    const auto sinceReference =
        std::chrono::system_clock::now().time_since_epoch() - std::chrono::seconds(std::int64_t{978'307'200});
    return Date(std::chrono::duration_cast<TimeInterval>(sinceReference));
}

}  // namespace corvane
