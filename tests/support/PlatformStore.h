// Task stores as the platform and the main application leave them, written by plain SQL: a second opinion on
// the layout, and the other writer in tests.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

struct sqlite3;

namespace corvane {

/// A connection of another program.
class PlainDatabase {
  public:
    enum class Closing {
        kLikePlatform,  ///< log and index stay, the log is not copied
        kLikeSqlite,    ///< the last one copies the log and removes both
    };

    /// Makes a missing file.
    explicit PlainDatabase(const std::filesystem::path& file, Closing closing = Closing::kLikePlatform);
    ~PlainDatabase();
    PlainDatabase(const PlainDatabase&) = delete;
    PlainDatabase& operator=(const PlainDatabase&) = delete;

    /// @throws std::runtime_error with SQLite's message
    void execute(const std::string& sql);
    /// All rows, one a line, columns with "|" between; NULL is "NULL", bytes are hexadecimal digits.
    std::string rows(const std::string& sql);
    std::int64_t integer(const std::string& sql);

    sqlite3* handle() const { return database_; }

  private:
    sqlite3* database_ = nullptr;
};

struct PlatformStoreShape {
    enum class Model {
        kCurrent,
        /// Columns of ours missing: ZGLIST.ZISISOLATED, ZCOLOR, ZUSER, ZGTASK.ZREGIONLAT, ZNOTES.
        kOlder,
        /// An entity GNote (so that GTask is 3 and GUser 4), unknown columns, tables and indexes; columns in
        /// the order that a migration leaves.
        kNewer,
    };
    Model model = Model::kCurrent;
    bool hasDerivedAttributes = false;  ///< ZGLIST.ZCHANGEDON, kept by triggers that call platform functions
    bool hasHistory = false;            ///< persistent history
    bool usesRollbackJournal = false;   ///< as its owner asked, instead of a log
};

inline constexpr const char* kPlatformStoreUuid = "6F2B1C7E-3A0D-4E57-9C1B-5D0A8E4F7B21";

/// A store with the account "Me" (1), the lists "Home" (1) and "Work" (2) and the tasks "Milk" (1) and
/// "Bread" (2) in "Home" and "Report" (3) in "Work". The files at rest are as the platform leaves them: the
/// rows in the main file, an empty log, an index.
void writePlatformStore(const std::filesystem::path& file, const PlatformStoreShape& shape = {});

/// Commits in a process that is killed before it closes: the log has what the main file does not have.
void commitAndDie(const std::filesystem::path& file, const std::string& sql);

/// Everything in a store but its task, list and account rows, as one text: the schema, the metadata, the
/// cached model, rows of unknown tables. To see that nothing of it was touched.
std::string unownedContent(const std::filesystem::path& file);

}  // namespace corvane
