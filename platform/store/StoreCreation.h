// Making the file of a new store.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/store/ModelDescription.h"
#include "platform/store/StoreError.h"

namespace corvane {

/// Makes an empty store with mode 0600. It appears under its name whole or not at all; death on the way
/// leaves at most a hidden file beside it. When another process has put a file there meanwhile, that one
/// stays and the call succeeds.
[[nodiscard]] std::optional<StoreError> createStoreFile(const std::filesystem::path& file,
                                                        const ManagedObjectModel& model);

}  // namespace corvane
