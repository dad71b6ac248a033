// One SQLite connection with its statement cache, opened so that closing it leaves no trace in the file.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/store/SqliteStatement.h"
#include "platform/store/StatementCache.h"
#include "platform/store/StoreError.h"

struct sqlite3;

namespace SQLite {
class Database;
}

namespace corvane {

/// What the connection says of its last failure, with `errno` as the failed call left it.
StoreError storeErrorOf(sqlite3* connection);

class SqliteDatabase {
  public:
    enum class Access {
        kShared,     ///< reads and writes beside other connections; reads only where the file allows no more
        kAlone,      ///< reads file and log while nobody else has it open; makes and changes no index file
        kMainFile,   ///< reads the main file as if it had no log and nobody changed it; touches nothing else
        kUnwritten,  ///< reads file and log without any lock; touches nothing
        kDraft,      ///< fills a file that nobody else knows; leaves no companions beside it
    };

    /// Opens a file that is there. Nothing of its content is read yet.
    static std::variant<std::unique_ptr<SqliteDatabase>, StoreError> open(
        const std::filesystem::path& file, Access access, std::chrono::milliseconds busyTimeout);
    ~SqliteDatabase();

    sqlite3* handle() const;
    /// Whether the file was opened for reading only.
    bool isReadOnly() const;

    /// Lends the prepared statement of a text.
    std::variant<SqliteStatement, StoreError> prepare(std::string_view sql);
    /// Runs statements that yield no rows.
    [[nodiscard]] std::optional<StoreError> execute(const std::string& sql);
    /// The first column of the first row; none without a row or on an error. Not counted as a run.
    std::optional<std::int64_t> integer(std::string_view sql);
    /// Rows that the last statement changed, those changed by triggers left out.
    std::int64_t changes() const;

    const StoreError& lastError() const { return statements_->lastError(); }
    std::size_t runs() const { return statements_->runs(); }

  private:
    explicit SqliteDatabase(std::unique_ptr<SQLite::Database> connection);

    // The statements go before their connection.
    std::unique_ptr<SQLite::Database> connection_;
    std::unique_ptr<StatementCache> statements_;
};

}  // namespace corvane
