// One prepared statement, borrowed from its connection's cache and reset when it goes out of scope.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/store/StoreError.h"
#include "platform/store/Value.h"

struct sqlite3_stmt;

namespace corvane {

class SqliteStatement {
  public:
    enum class Step { kRow, kDone, kError };
    enum class StorageClass { kNull, kInteger, kReal, kText, kBlob };

    explicit SqliteStatement(sqlite3_stmt* statement) : statement_(statement) {}
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&&) = delete;
    ~SqliteStatement();

    // Parameters, numbered from 1. Texts and bytes are copied by SQLite.
    void bind(int parameter, const Value& value);  ///< a date as a double, an object as its row number
    void bindInteger(int parameter, std::int64_t value);
    void bindDouble(int parameter, double value);
    void bindText(int parameter, std::u16string_view value);
    void bindBytes(int parameter, std::span<const std::uint8_t> value);
    void bindNull(int parameter);

    Step step();

    // The row at hand, columns from 0. Views are valid until the next step.
    StorageClass storageClass(int column) const;
    std::int64_t integer(int column) const;
    double real(int column) const;
    std::string_view utf8(int column) const;
    std::span<const std::uint8_t> bytes(int column) const;

  private:
    sqlite3_stmt* statement_;
};

}  // namespace corvane
