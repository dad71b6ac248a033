#include "WidgetFixture.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/foundation/Text.h"

namespace corvane {

WidgetFixture::WidgetFixture(const TestSurroundings& surroundings) : environment(surroundings) {
    data.launch();
    account = &context().insert<GUser>();
    home = &addList(u"Home", account);
    controller.viewDidLoad();
}

GList& WidgetFixture::addList(std::u16string_view name, GUser* user) {
    GList& list = context().insert<GList>();
    list.setName(name);
    list.setUser(user);
    return list;
}

GTask& WidgetFixture::addTask(std::u16string_view name, const char* due) {
    GTask& task = context().insert<GTask>();
    task.setName(name);
    task.setList(home);
    task.setHasDueDate(due != nullptr);
    if (due) task.setDueDate(at(due));
    return task;
}

void WidgetFixture::addTasks(int count, const char* due) {
    for (int i = 0; i < count; ++i) addTask(u"Task", due);
}

void WidgetFixture::save() {
    const auto error = context().save();
    ASSERT_FALSE(error) << error->message;
}

void WidgetFixture::refresh() {
    save();
    std::vector<UpdateResult> results;
    controller.widgetPerformUpdate([&results](UpdateResult result) { results.push_back(result); });
    EXPECT_EQ(results, std::vector{UpdateResult::kNewData});
}

std::string WidgetFixture::titles() const {
    std::string text;
    for (const GTask* task : controller.todayTasks()) {
        if (!text.empty()) text += ' ';
        text += utf8FromText(task->name().value_or(u"(none)"));
    }
    return text;
}

}  // namespace corvane
