// Whole files: read with a bound, written all or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>
#include <variant>
#include <vector>

namespace corvane {

/// The bytes of a file, or why they cannot be had; a file larger than `maximumSize` bytes gives
/// `std::errc::file_too_large`.
std::variant<std::vector<std::uint8_t>, std::error_code> contentsOfFile(const std::filesystem::path& file,
                                                                        std::size_t maximumSize);

/// Whose a written file is, and what may be overwritten.
enum class FileAccess {
    kOwnerOnly,  ///< the program's own: read and written by its owner alone; whatever has the name is
                 ///< replaced
    kByUmask,  ///< named by a person: a new file's mode is the umask's, an existing one keeps mode and owner;
               ///< what is no regular file (a pipe, a device) is written into and stays
};

/// Replaces a file through a temporary one beside it, written through to the disk. A symbolic link stays one;
/// the file behind it is replaced, or made where it is missing.
///
/// @return no error, or why the file is as it was; a pipe or device may have taken a part
[[nodiscard]] std::error_code writeFileAtomically(const std::filesystem::path& file,
                                                  std::span<const std::uint8_t> contents, FileAccess access);

/// Brings a file, or the entries of a directory, through to the disk. A rename is there once its directory
/// is.
bool synchronise(const std::filesystem::path& path);

}  // namespace corvane
