// A fresh store with one account and one list.
#pragma once

#include <gtest/gtest.h>

#include "TaskTrees.h"
#include "model/GSData.h"
#include "support/TestEnvironment.h"

namespace corvane {

class ModelTest : public testing::Test {
  protected:
    ModelTest() {
        data_.launch();
        account_ = &makeAccount(context());
        list_ = &makeList(*account_, u"List");
    }

    GSData& data() { return data_; }
    ManagedObjectContext& context() { return data_.viewContext(); }
    void save() { ASSERT_EQ(context().save(), std::nullopt); }
    GUser& account() { return *account_; }
    GList& list() { return *list_; }
    GTask& named(std::string_view name) { return task(list(), name); }

    /// Another list with these tasks.
    GList& listWith(std::string_view tree) {
        GList& made = makeList(account(), u"Other");
        plant(made, tree);
        return made;
    }

    const TestEnvironment environment_;

  private:
    GSData data_;
    GUser* account_ = nullptr;
    GList* list_ = nullptr;
};

}  // namespace corvane
