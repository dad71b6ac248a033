// Stores in a directory of their own, with somebody else's connection beside them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "BookModel.h"
#include "StoreFileModel.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {

/// A place for a task store, with nothing in it yet.
struct StoreFileTest : testing::Test {
    TemporaryDirectory directory;
    std::filesystem::path file = directory.path() / "Plorix.sqlite";
    std::filesystem::path log = directory.path() / "Plorix.sqlite-wal";
    std::filesystem::path index = directory.path() / "Plorix.sqlite-shm";

    /// Somebody else's program writes.
    void executeElsewhere(const std::string& sql) { PlainDatabase(file).execute(sql); }
    /// What the file holds, as PlainDatabase tells it.
    std::string rows(const std::string& sql) { return PlainDatabase(file).rows(sql); }
};

/// The same with the platform's store.
struct PlatformStoreTest : StoreFileTest {
    void SetUp() override { writePlatformStore(file); }
};

/// A store of the book model.
class BookStoreTest : public testing::Test {
  protected:
    ManagedObjectContext& context() { return books_.context(); }
    void executeElsewhere(const std::string& sql) { PlainDatabase(file_).execute(sql); }
    std::string rows(const std::string& sql) { return PlainDatabase(file_).rows(sql); }
    std::string found(std::u16string_view predicate) { return titles(context(), booksWhere(predicate)); }

    TestEnvironment environment_;
    std::filesystem::path file_ = environment_.containerDirectory() / "Books.sqlite";
    BookStore books_{file_};
};

}  // namespace corvane
