// Where a store lies and how it is to be opened.
#pragma once

#include <chrono>
#include <filesystem>

namespace corvane {

struct PersistentStoreDescription {
    std::filesystem::path file;  ///< empty: there is no place for a store
    /// A missing column reads as its default and is added when a save needs it.
    bool migratesAutomatically = false;
    bool infersMappingModel = false;
    /// Makes the store when the file is not there (0600). Otherwise a missing file is an error.
    bool createsMissingStore = true;
    /// How long reading and saving wait for a lock that another program holds.
    std::chrono::milliseconds busyTimeout{5000};
};

}  // namespace corvane
