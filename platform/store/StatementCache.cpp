#include "platform/store/StatementCache.h"

#include <sqlite3.h>

#include <algorithm>

#include "platform/store/SqliteDatabase.h"

namespace corvane {

void StatementFinalizer::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

CachedStatement* StatementCache::lend(std::string_view text) {
    const auto found = byText_.find(text);
    const bool isTaken = found != byText_.end() && found->second->isLent;
    CachedStatement* lent = nullptr;
    if (found != byText_.end() && !isTaken) {
        lent = found->second.get();
    } else {
        std::unique_ptr<CachedStatement> prepared = prepare(text);
        if (!prepared) return nullptr;
        lent = prepared.get();
        if (isTaken) {
            twins_.push_back(std::move(prepared));
        } else {
            dropLongestUnused();
            byText_.emplace(lent->text, std::move(prepared));
        }
    }
    lent->isLent = true;
    lent->lastUse = ++uses_;
    return lent;
}

void StatementCache::takeBack(CachedStatement& statement) {
    sqlite3_reset(statement.handle.get());
    sqlite3_clear_bindings(statement.handle.get());
    statement.isLent = false;
    std::erase_if(twins_, [&](const auto& twin) { return twin.get() == &statement; });
}

void StatementCache::noteError() { lastError_ = storeErrorOf(connection_); }

std::unique_ptr<CachedStatement> StatementCache::prepare(std::string_view text) {
    sqlite3_stmt* handle = nullptr;
    const int code =
        sqlite3_prepare_v2(connection_, text.data(), static_cast<int>(text.size()), &handle, nullptr);
    if (code != SQLITE_OK) {
        noteError();
        return nullptr;
    }
    auto prepared = std::make_unique<CachedStatement>();
    prepared->text = text;
    prepared->handle.reset(handle);
    return prepared;
}

void StatementCache::dropLongestUnused() {
    if (byText_.size() < kCapacity) return;
    auto oldest = byText_.end();
    for (auto it = byText_.begin(); it != byText_.end(); ++it) {
        if (it->second->isLent) continue;
        if (oldest == byText_.end() || it->second->lastUse < oldest->second->lastUse) oldest = it;
    }
    if (oldest != byText_.end()) byText_.erase(oldest);
}

}  // namespace corvane
