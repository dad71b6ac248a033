// One prepared statement, borrowed from its connection's cache and reset when it goes out of scope.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/store/StoreError.h"
#include "platform/store/Value.h"

struct sqlite3_stmt;

namespace corvane {

class StatementCache;
struct CachedStatement;

class SqliteStatement {
  public:
    enum class Step { kRow, kDone, kError };
    enum class StorageClass { kNull, kInteger, kReal, kText, kBlob };

    /// Made by SqliteStore::prepare. Must not outlive the store.
    SqliteStatement(StatementCache& cache, CachedStatement& statement);
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&&) = delete;
    ~SqliteStatement();

    // Parameters, numbered from 1; one that was never bound is NULL. Texts and bytes are copied by SQLite. A
    // value that cannot be bound makes the next step fail.
    /// A date as seconds since 2001, an object as its row number; an object without a row is NULL.
    void bind(int parameter, const Value& value);
    void bindInteger(int parameter, std::int64_t value);
    void bindDouble(int parameter, double value);
    /// As UTF-8; a lone surrogate becomes U+FFFD.
    void bindText(int parameter, std::u16string_view value);
    void bindUtf8(int parameter, std::string_view value);
    void bindBytes(int parameter, std::span<const std::uint8_t> value);
    void bindNull(int parameter);

    Step step();
    /// Makes the statement ready for another run. Parameters keep their values.
    void reset();
    void clearBindings();

    // The row at hand, columns from 0. Views are valid until the next step. Any storage class reads as any
    // other by SQLite's own conversions.
    StorageClass storageClass(int column) const;
    std::int64_t integer(int column) const;
    double real(int column) const;
    /// The bytes of a text as they stand in the file, which need not be well-formed UTF-8.
    std::string_view utf8(int column) const;
    std::span<const std::uint8_t> bytes(int column) const;

  private:
    void noteBinding(int code);

    StatementCache* cache_;
    CachedStatement* cached_;
    sqlite3_stmt* statement_;
    bool isRunning_ = false;
    bool hasUnboundValue_ = false;
};

}  // namespace corvane
