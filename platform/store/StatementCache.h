// The prepared statements of a connection, kept by their text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/store/StoreError.h"

struct sqlite3;
struct sqlite3_stmt;

namespace corvane {

struct StatementFinalizer {
    void operator()(sqlite3_stmt* statement) const;
};

struct CachedStatement {
    std::string text;
    std::unique_ptr<sqlite3_stmt, StatementFinalizer> handle;
    std::uint64_t lastUse = 0;
    bool isLent = false;
};

class StatementCache {
  public:
    /// Statements kept beyond those in use; the longest unused go first.
    static constexpr std::size_t kCapacity = 96;

    explicit StatementCache(sqlite3* connection) : connection_(connection) {}
    StatementCache(const StatementCache&) = delete;
    StatementCache& operator=(const StatementCache&) = delete;

    /// Lends the statement of a text; one that is in use already gets a twin. Null when the text cannot be
    /// prepared, see `lastError`.
    CachedStatement* lend(std::string_view text);
    void takeBack(CachedStatement& statement);

    /// Keeps what the connection says of a failure.
    void noteError();
    const StoreError& lastError() const { return lastError_; }

    void countRun() { ++runs_; }
    std::size_t runs() const { return runs_; }

  private:
    std::unique_ptr<CachedStatement> prepare(std::string_view text);
    void dropLongestUnused();

    sqlite3* connection_;
    std::unordered_map<std::string_view, std::unique_ptr<CachedStatement>> byText_;
    std::vector<std::unique_ptr<CachedStatement>> twins_;
    std::uint64_t uses_ = 0;
    std::size_t runs_ = 0;
    StoreError lastError_;
};

}  // namespace corvane
