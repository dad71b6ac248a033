// Files of tests, as bytes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {

/// The bytes of a file; a missing file is an error of the test.
std::string fileBytes(const std::filesystem::path& file);

/// Writes a file in place, as a program of somebody else would; missing directories are made.
void writeFileBytes(const std::filesystem::path& file, std::string_view bytes);

}  // namespace corvane
