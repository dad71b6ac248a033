// A store of the book model in a directory of its own, with somebody else's connection beside it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "BookModel.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {

class BookStoreTest : public testing::Test {
  protected:
    ManagedObjectContext& context() { return books_.context(); }

    /// Somebody else's program writes.
    void executeElsewhere(const std::string& sql) { PlainDatabase(file_).execute(sql); }
    /// What the file holds, as PlainDatabase tells it.
    std::string rows(const std::string& sql) { return PlainDatabase(file_).rows(sql); }

    TestEnvironment environment_;
    std::filesystem::path file_ = environment_.containerDirectory() / "Books.sqlite";
    BookStore books_{file_};
};

}  // namespace corvane
