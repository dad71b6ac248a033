#include "WindowFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <QTest>

#include "platform/foundation/Text.h"

namespace corvane {
namespace {

WidgetHostOptions keepingUrls(WidgetHostOptions options, std::vector<std::u16string>& urls) {
    options.openUrl = [&urls](std::u16string_view url) { urls.emplace_back(url); };
    return options;
}

}  // namespace

WindowFixture::WindowFixture(const WidgetHostOptions& options, const TestSurroundings& surroundings)
    : WidgetFixture(surroundings),
      host(keepingUrls(options, opened), measuring),
      window(host, measuring, actions) {
    const auto refreshWindow = [this] {
        host.refresh();
        window.showRefresh();
    };
    QObject::connect(&actions, &TaskActions::changed, &window, refreshWindow);
    QObject::connect(&window, &WidgetWindow::refreshWanted, &window, refreshWindow);
}

void WindowFixture::show() {
    save();
    host.refresh();
    window.showRefresh();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

std::string WindowFixture::titles() const {
    std::string text;
    for (const TaskRow* row : window.rows()) {
        const std::string title = utf8FromText(row->content().title);
        if (!text.empty()) text += ' ';
        text += row->act() == RowAct::kNone ? title : "(" + title + ")";
    }
    return text;
}

std::string WindowFixture::focusedTitle() const {
    const auto* row = qobject_cast<const TaskRow*>(window.focusWidget());
    return row ? utf8FromText(row->content().title) : std::string();
}

void WindowFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* target = window.focusWidget();
    QTest::keyClick(target ? target : &window, key, modifiers);
}

bool WindowFixture::shows(const QString& name) const {
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    return std::ranges::any_of(widgets, [&](const QWidget* widget) {
        return widget->accessibleName() == name && widget->isVisibleTo(&window);
    });
}

bool waitUntil(const std::function<bool()>& condition) {
    constexpr int kPatienceInMilliseconds = 30'000;
    return QTest::qWaitFor(condition, kPatienceInMilliseconds);
}

}  // namespace corvane
