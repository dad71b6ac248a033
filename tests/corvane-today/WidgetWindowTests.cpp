#include "apps/corvane-today/WidgetWindow.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <QAbstractButton>
#include <QImage>
#include <QMenu>
#include <QTest>
#include <QToolButton>

#include "WindowFixture.h"
#include "platform/foundation/Text.h"
#include "support/FileBytes.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

WidgetHostOptions compact() {
    WidgetHostOptions options;
    options.displayMode = DisplayMode::kCompact;
    return options;
}

QToolButton& undoButton(TaskRow& row) { return *row.findChild<QToolButton*>(); }

void addNamed(WindowFixture& fixture, std::initializer_list<const char16_t*> names) {
    std::int16_t order = 0;
    for (const char16_t* name : names) fixture.addTask(name).setDisplayOrder(order++);
}

TEST(WidgetWindow, ShowsTheRowsThatTheControllerSays) {
    WindowFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread", u"Eggs"});
    fixture.show();
    EXPECT_EQ(fixture.titles(), "Milk Bread Eggs");
    EXPECT_EQ(fixture.window.height(), qCeil((WindowHeader::kHeight + 3 * 44 + 5 + 26 + 8) *
                                             fixture.measuring.fonts().pixelsPerPoint()));
    EXPECT_FALSE(fixture.shows(QStringLiteral("Well done! No more tasks for today.")));
}

TEST(WidgetWindow, LeadsTapsToTheControllersUrls) {
    WidgetHostOptions options;
    options.expandedSize.height = 300;
    WindowFixture fixture(options);
    fixture.addTasks(7);
    fixture.show();
    ASSERT_EQ(fixture.window.rows().size(), 5u);
    QTest::mouseClick(&fixture.row(1), Qt::LeftButton);
    fixture.press(Qt::Key_M);
    fixture.press(Qt::Key_N, Qt::ControlModifier);
    const std::vector<std::u16string> expected = {*fixture.host.controller().rowUrl(1),
                                                  u"velmor-plorixmax://localhost/today",
                                                  u"velmor-plorixmax://localhost/addtask"};
    EXPECT_EQ(fixture.opened, expected);
    EXPECT_TRUE(fixture.shows(QStringLiteral("View More (2)")));
}

TEST(WidgetWindow, ShowsTheEmptyViewAndLeadsToToday) {
    WindowFixture fixture;
    fixture.show();
    EXPECT_TRUE(fixture.shows(QStringLiteral("Well done! No more tasks for today.")));
    fixture.window.findChild<EmptyView*>()->click();
    EXPECT_EQ(fixture.opened, std::vector<std::u16string>{u"velmor-plorixmax://localhost/today"});
}

TEST(WidgetWindow, CutsRowsWholeWhenItIsCompact) {
    WindowFixture fixture(compact());
    fixture.addTasks(4);
    fixture.show();
    EXPECT_EQ(fixture.window.rows().size(), 2u);
    auto* more = fixture.window.findChild<WindowHeader*>()->findChildren<QToolButton*>().at(1);
    ASSERT_EQ(more->accessibleName(), QStringLiteral("Show more"));
    more->click();
    EXPECT_EQ(fixture.window.rows().size(), 4u);
    EXPECT_EQ(fixture.host.widgetActiveDisplayMode(), DisplayMode::kExpanded);
}

TEST(WidgetWindow, OffersNoOtherModeWhereCompactIsEnough) {
    WindowFixture fixture(compact());
    fixture.addTask(u"Milk");
    fixture.show();
    EXPECT_FALSE(fixture.shows(QStringLiteral("Show more")));
}

TEST(WidgetWindow, KeepsACompletedTaskInSightUntilItsTimeIsOver) {
    WindowFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread", u"Eggs"});
    fixture.window.setActDuration(1ms);
    fixture.show();
    fixture.row(1).setFocus();
    fixture.press(Qt::Key_Space);
    EXPECT_EQ(fixture.titles(), "Milk (Bread) Eggs");
    EXPECT_EQ(fixture.focusedTitle(), "Eggs");
    EXPECT_TRUE(waitUntil([&] { return fixture.titles() == "Milk Eggs"; }));
    EXPECT_EQ(fixture.focusedTitle(), "Eggs");
}

TEST(WidgetWindow, TakesBackWhatItsUndoButtonStandsBeside) {
    WindowFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread", u"Eggs"});
    fixture.show();
    fixture.row(0).setFocus();
    fixture.press(Qt::Key_Space);
    fixture.press(Qt::Key_Space);
    ASSERT_EQ(fixture.titles(), "(Milk) (Bread) Eggs");
    undoButton(fixture.row(0)).click();
    EXPECT_TRUE(waitUntil([&] { return fixture.titles() == "Milk (Bread) Eggs"; }));
    fixture.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fixture.titles(), "Milk Bread Eggs");
}

TEST(WidgetWindow, UndoesARepeatingTaskThatHasMovedOn) {
    WindowFixture fixture;
    GTask& task = fixture.addTask(u"Water", "2024-03-03 00:00");
    task.setAlertRepeat(16);
    task.setAlertRepeatInterval(1);
    fixture.show();
    fixture.row(0).setFocus();
    fixture.press(Qt::Key_Space);
    // Its next day is past as well: the row that was done stands beside the one that is to do.
    ASSERT_EQ(fixture.titles(), "(Water) Water");
    EXPECT_EQ(civilText(*task.dueDate()), "2024-03-04");
    fixture.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fixture.titles(), "Water");
    EXPECT_EQ(civilText(*task.dueDate()), "2024-03-03");
}

TEST(WidgetWindow, KeepsTheFocusOnItsTaskThroughARefresh) {
    WindowFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.show();
    fixture.row(1).setFocus();
    fixture.addTask(u"First").setPriority(50);
    fixture.save();
    fixture.host.refresh();
    fixture.window.showRefresh();
    EXPECT_EQ(fixture.titles(), "First Milk Bread");
    EXPECT_EQ(fixture.focusedTitle(), "Bread");
}

TEST(WidgetWindow, OffersARowsActsByKey) {
    WindowFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.show();
    fixture.press(Qt::Key_Down);
    fixture.press(Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    QTest::keyClick(menu, Qt::Key_Up);  // the last entry
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(fixture.titles(), "(Milk) Bread");
    fixture.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fixture.titles(), "Milk Bread");
}

TEST(WidgetWindow, GoesFromRowToRowByKeys) {
    WindowFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread", u"Eggs"});
    fixture.show();
    struct Step {
        Qt::Key key;
        const char* focused;
    };
    constexpr Step kSteps[] = {
        {Qt::Key_Down, "Milk" },
        {Qt::Key_Down, "Bread"},
        {Qt::Key_Up,   "Milk" },
        {Qt::Key_Up,   "Milk" },
        {Qt::Key_End,  "Eggs" },
        {Qt::Key_Down, "Eggs" },
        {Qt::Key_Home, "Milk" },
        {Qt::Key_Tab,  "Bread"},
    };
    for (const Step& step : kSteps) {
        fixture.press(step.key);
        EXPECT_EQ(fixture.focusedTitle(), step.focused);
    }
    fixture.press(Qt::Key_Return);
    EXPECT_EQ(fixture.opened, std::vector<std::u16string>{*fixture.host.controller().rowUrl(1)});
    fixture.window.findChild<QToolButton*>()->setFocus();
    fixture.press(Qt::Key_Down);
    EXPECT_EQ(fixture.focusedTitle(), "Milk") << "from a button of the header";
}

TEST(WidgetWindow, HidesTextsWhenItIsPrivate) {
    WindowFixture fixture;
    fixture.addTask(u"Surprise").setNotes(u"party");
    fixture.show();
    const QImage open = fixture.row(0).grab().toImage();
    fixture.press(Qt::Key_P);
    EXPECT_EQ(fixture.row(0).accessibleName(), QStringLiteral("Hidden task"));
    const QImage hidden = fixture.row(0).grab().toImage();
    EXPECT_NE(hidden, open);
    fixture.press(Qt::Key_P);
    EXPECT_EQ(fixture.row(0).grab().toImage(), open);
}

TEST(WidgetWindow, SaysWhenTheStoreCannotBeRead) {
    WindowFixture fixture;
    fixture.addTask(u"Milk");
    fixture.show();
    const std::filesystem::path file = fixture.environment.containerDirectory() / "Plorix.sqlite";
    const auto message = [&] {
        for (const QLabel* label : fixture.window.findChildren<QLabel*>()) {
            if (label->isVisible() && label->accessibleName().contains(QLatin1String("could not be read")))
                return true;
        }
        return false;
    };
    ASSERT_FALSE(message());
    std::filesystem::rename(file, file.string() + ".away");
    writeFileBytes(file, "this is no store");
    Q_EMIT fixture.window.refreshWanted();
    EXPECT_TRUE(message());
    EXPECT_TRUE(fixture.shows(QStringLiteral("Well done! No more tasks for today.")));

    std::filesystem::rename(file.string() + ".away", file);
    Q_EMIT fixture.window.refreshWanted();
    EXPECT_FALSE(message());
    EXPECT_EQ(fixture.titles(), "Milk");
}

TEST(WidgetWindow, DrawsHostileAndEndlessTextsAsPlainOnes) {
    WindowFixture fixture;
    fixture.addTask(u"<img src='file:///etc/passwd'><b>bold</b> &amp;").setNotes(u"a\u202Eb\u0007c\nd");
    fixture.addTask(std::u16string(3000, u'x')).setNotes(std::u16string(200'000, u'\u05D0'));
    fixture.addTask(u"\xD800 lone").setNotes(u"\u0000x");
    fixture.show();
    EXPECT_EQ(fixture.window.rows().size(), 3u);
    for (TaskRow* row : fixture.window.rows()) EXPECT_FALSE(row->grab().isNull());
    EXPECT_LE(fixture.row(1).width(), fixture.window.width());
}

TEST(WidgetWindow, MakesRowsOnlyForTheTasksThatFit) {
    WindowFixture fixture;
    fixture.addTasks(10'000);
    fixture.show();
    EXPECT_EQ(fixture.window.rows().size(), 11u);
    EXPECT_TRUE(fixture.shows(QStringLiteral("View More (9989)")));
    EXPECT_EQ(fixture.window.findChildren<TaskRow*>().size(), 11);
}

TEST(WidgetWindow, DrawsEveryPixelOfEveryScale) {
    WindowFixture fixture;
    GTask& task = fixture.addTask(u"Milk");
    task.setPriority(50);
    fixture.show();
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        QImage image((QSizeF(fixture.window.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        fixture.window.render(&image);
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 255);
        EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1).alpha(), 255);
    }
}

TEST(WidgetWindow, MirrorsItselfWhereTextIsReadFromTheRight) {
    WindowFixture fixture;
    GList& list = *fixture.home;
    list.setColor(Color::rgb(0, 0.5, 0));
    fixture.addTask(u"Milk");
    fixture.window.setLayoutDirection(Qt::RightToLeft);
    fixture.show();
    const QImage row = fixture.row(0).grab().toImage();
    EXPECT_EQ(row.pixelColor(row.width() - 2, row.height() / 2).rgb(), qRgb(0, 128, 0));
    EXPECT_NE(row.pixelColor(1, row.height() / 2).rgb(), qRgb(0, 128, 0));
}

TEST(WidgetWindow, GrowsWithTheDesktopsText) {
    const QFont small = QApplication::font();
    QFont large = small;
    large.setPointSizeF(small.pointSizeF() * 2);
    const double ratio = WidgetFonts(large).pixelsPerPoint() / WidgetFonts(small).pixelsPerPoint();
    EXPECT_GT(ratio, 1.6);
    const QtTextMeasuring measuring{WidgetFonts(large)};
    const double lines = measuring.sizeOfText(u"X", measuring.fonts().title()).height +
                         measuring.sizeOfText(u"X", measuring.fonts().details()).height;
    EXPECT_LE(lines, 44);
}

}  // namespace
}  // namespace corvane
