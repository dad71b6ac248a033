#include "model/StoreRelocation.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "platform/foundation/FileContents.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesWithPrefix(const fs::path& directory, std::string_view prefix) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unreadable;
        if (!fs::is_regular_file(entry->status(unreadable))) continue;
        if (entry->path().filename().string().starts_with(prefix)) files.push_back(entry->path());
    }
    return files;
}

void copyWhole(const fs::path& source, const fs::path& destination) {
    const fs::path partial = destination.parent_path() / ("." + destination.filename().string() + ".partial");
    std::error_code error;
    fs::remove(partial, error);
    fs::copy_file(source, partial, error);
    if (!error) fs::permissions(partial, fs::perms::owner_read | fs::perms::owner_write, error);
    if (!error && synchronise(partial)) fs::rename(partial, destination, error);
    fs::remove(partial, error);
}

}  // namespace

void copyStoreFiles(const fs::path& from, const fs::path& to, std::string_view storeName) {
    std::vector<fs::path> files = filesWithPrefix(from, storeName);
    const bool hasMainFile = std::ranges::find(files, from / storeName) != files.end();
    std::error_code ignored;
    // The log of one store beside the main file of another would be taken for its own.
    for (const char* suffix : {"-wal", "-shm"}) {
        const std::string companion = std::string(storeName) + suffix;
        if (hasMainFile) fs::remove(to / companion, ignored);
        if (!hasMainFile) std::erase(files, from / companion);
    }
    for (const fs::path& file : files) {
        const fs::path destination = to / file.filename();
        fs::remove(destination, ignored);
        copyWhole(file, destination);
    }
}

}  // namespace corvane
