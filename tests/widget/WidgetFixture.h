// A widget over a fresh store with one account and one list, in a test environment of its own.
#pragma once

#include <string>
#include <string_view>

#include "model/GSData.h"
#include "support/TestEnvironment.h"
#include "widget/TodayViewController.h"
#include "widget/WidgetSnapshot.h"

namespace corvane {

class WidgetFixture {
  public:
    explicit WidgetFixture(const TestSurroundings& surroundings = {});

    TestEnvironment environment;
    GSData data;
    SharedInstanceScope sharedInstance{data};
    FixedExtensionContext host;
    FixedAdvanceMeasuring measuring{6, 15};
    TodayViewController controller{host, measuring};
    GUser* account = nullptr;
    GList* home = nullptr;

    ManagedObjectContext& context() { return data.viewContext(); }
    GList& addList(std::u16string_view name, GUser* user);
    /// @param due  civil time in the zone in force; null: no due date
    GTask& addTask(std::u16string_view name, const char* due = "2024-03-05 00:00");
    void addTasks(int count, const char* due = "2024-03-05 00:00");
    /// Writes what is pending and fails the test when that does not work.
    void save();

    /// Saves, refreshes, and checks that the host was told of new data once.
    void refresh();
    /// Titles of all due tasks in order, separated by blanks.
    std::string titles() const;
};

}  // namespace corvane
