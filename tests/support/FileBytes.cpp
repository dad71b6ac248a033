#include "support/FileBytes.h"

#include <fstream>
#include <iterator>

namespace corvane {

std::string fileBytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFileBytes(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    stream << bytes;
}

}  // namespace corvane
