// The store file: one SQLite connection, its schema as found, rows in and out.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace corvane {

class SqliteStore {
  public:
    ~SqliteStore();

    const std::filesystem::path& file() const;
    const std::string& uuid() const;
    /// Persistent history, or a file or directory that cannot be written.
    bool isReadOnly() const;
    /// Whether this program made the store.
    bool isOurs() const;

    /// A number that moves when, and only when, another connection has committed.
    std::int64_t dataVersion();

    std::size_t statementCount() const;

    // (rows and transactions: the store's helper fills this in)
};

}  // namespace corvane
