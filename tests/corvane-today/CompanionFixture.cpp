#include "CompanionFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include <QStackedWidget>
#include <QTest>

#include "WindowFixture.h"

namespace corvane {
namespace {

template <class Widget>
Widget& named(const QWidget& page, const char* name) {
    for (Widget* widget : page.findChildren<Widget*>()) {
        if (widget->accessibleName() == QLatin1String(name) && widget->isVisible()) return *widget;
    }
    throw std::runtime_error(std::string("there is no field ") + name);
}

}  // namespace

CompanionFixture::CompanionFixture() {
    home->setIsDefault(true);
    QObject::connect(&actions, &TaskActions::changed, &window, &CompanionWindow::refresh);
}

void CompanionFixture::showToday() {
    save();
    window.showToday();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

void CompanionFixture::showTask(const GTask& task) {
    save();
    window.showTask(taskid(task));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

void CompanionFixture::showAddTask() {
    save();
    window.showAddTask();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

QWidget& CompanionFixture::page() const { return *window.findChild<QStackedWidget*>()->currentWidget(); }

QLineEdit& CompanionFixture::line(const char* name) { return named<QLineEdit>(page(), name); }

WordsField& CompanionFixture::lineField(const char* name) {
    return *qobject_cast<WordsField*>(line(name).parentWidget());
}

QComboBox& CompanionFixture::choice(const char* name) { return named<QComboBox>(page(), name); }

NotesField& CompanionFixture::notes() { return named<NotesField>(page(), "Notes"); }

void CompanionFixture::type(const char* name, const char* text, Qt::Key end) {
    QLineEdit& field = line(name);
    field.setFocus();
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, QString::fromUtf8(text));
    if (end != Qt::Key_unknown) QTest::keyClick(&field, end);
}

std::string CompanionFixture::countOf(std::uint32_t filter) {
    EXPECT_TRUE(waitUntil([this] { return !filters().isCounting(); }));
    return filters().countText(filter).toStdString();
}

std::string CompanionFixture::rows() {
    const auto& model = *qobject_cast<TaskListModel*>(list().model());
    std::string text;
    for (int i = 0; i < model.rowCount(); ++i) {
        const QModelIndex index = model.index(i);
        const std::string title = index.data().toString().toStdString();
        if (i > 0) text += ' ';
        text += model.row(index).isDone ? "(" + title + ")" : title;
    }
    return text;
}

std::string CompanionFixture::currentTitle() { return list().currentIndex().data().toString().toStdString(); }

void CompanionFixture::search(const char* text) {
    named<QLineEdit>(page(), "Search").setText(QString::fromUtf8(text));
    QTest::keyClick(&line("Search"), Qt::Key_Return);
}

std::string CompanionFixture::problem() {
    for (const MessageLine* message : page().findChildren<MessageLine*>()) {
        if (message->isVisible() && message->isProblem()) return message->text().toStdString();
    }
    return {};
}

}  // namespace corvane
