// Copying a store to another directory, its SQLite companions included.
#pragma once

#include <filesystem>
#include <string_view>

namespace corvane {

/// Copies the regular files whose names begin with the store's, replacing those of the same names; companions
/// of a replaced store go with it. Each file arrives whole, with the owner's rights only, or not at all: what
/// could not be copied is missing afterwards. No connection may have either store open.
void copyStoreFiles(const std::filesystem::path& from, const std::filesystem::path& to,
                    std::string_view storeName);

}  // namespace corvane
