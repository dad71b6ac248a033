// The whole program in this process, over a real store.
#include "apps/corvane-today/Application.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <QImage>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include "WindowFixture.h"
#include "apps/corvane-today/Autostart.h"
#include "apps/corvane-today/CompanionWindow.h"
#include "apps/corvane-today/PngOutput.h"
#include "apps/corvane-today/WindowSettings.h"
#include "support/FileBytes.h"
#include "support/ProcessVariable.h"

namespace corvane {
namespace {

class ApplicationTest : public testing::Test {
  protected:
    ApplicationTest() { fixture_.save(); }

    /// A commit by another connection, as the main application makes it.
    void addTaskElsewhere(std::u16string_view name) {
        GSData other;
        other.launch();
        const std::string uri = fixture_.context().uriRepresentation(*fixture_.home);
        auto& task = other.viewContext().insert<GTask>();
        task.setName(name);
        task.setList(static_cast<GList*>(other.viewContext().objectWithUri(uri)));
        task.setHasDueDate(true);
        task.setDueDate(at("2024-03-05"));
        ASSERT_FALSE(other.viewContext().save());
    }

    DesktopOptions options() const {
        DesktopOptions options;
        options.environment.now = "a clock of its own";
        return options;
    }

    TemporaryDirectory home_;
    const ProcessVariable config_{"XDG_CONFIG_HOME", home_.path().c_str()};
    WidgetFixture fixture_;
};

TEST_F(ApplicationTest, ShowsWhatAnotherProgramCommits) {
    Application application(options());
    application.start();
    ASSERT_EQ(application.window().rows().size(), 0u);
    addTaskElsewhere(u"Milk");
    EXPECT_TRUE(waitUntil([&] { return application.window().rows().size() == 1; }));
    EXPECT_EQ(application.window().rows().front()->content().title, u"Milk");
}

TEST_F(ApplicationTest, PreviewsTomorrowWhileTheKeyIsHeld) {
    fixture_.addTask(u"Later", "2024-03-06 09:00");
    fixture_.save();
    Application application(options());
    application.start();
    WidgetWindow& window = application.window();
    ASSERT_TRUE(window.rows().empty());
    QTest::keyPress(&window, Qt::Key_T);
    ASSERT_EQ(window.rows().size(), 1u);
    EXPECT_EQ(window.rows().front()->content().timeLabel.text, u"Today");
    EXPECT_EQ(civilText(now()), "2024-03-05 12:00");
    QTest::keyRelease(&window, Qt::Key_T);
    EXPECT_TRUE(window.rows().empty());
}

TEST_F(ApplicationTest, ChangesItsColorsWhileItRuns) {
    fixture_.addTask(u"Milk");
    fixture_.save();
    Application application(options());
    application.start();
    const auto ground = [&] { return application.window().grab().toImage().pixelColor(1, 1).lightness(); };
    application.chooseColors(ColorScheme::Choice::kDark);
    EXPECT_LT(ground(), 60);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window).lightness(), ground());
    application.chooseColors(ColorScheme::Choice::kLight);
    EXPECT_GT(ground(), 240);
}

TEST_F(ApplicationTest, RemembersTheModeForTheOwnerAlone) {
    {
        Application application(options());
        application.start();
        EXPECT_TRUE(waitUntil([&] { return application.hasStarted(); }));
        application.host().setDisplayMode(DisplayMode::kCompact);
        Q_EMIT application.window().arrangementChanged();
    }
    EXPECT_EQ(readWindowState().mode, DisplayMode::kCompact);
    const auto permissions = std::filesystem::status(home_.path() / "corvane" / "today.ini").permissions();
    EXPECT_EQ(permissions, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    Application again(options());
    EXPECT_EQ(again.host().widgetActiveDisplayMode(), DisplayMode::kCompact);
}

TEST_F(ApplicationTest, TakesNonsenseInItsSettingsForDefaults) {
    std::filesystem::create_directories(home_.path() / "corvane");
    writeFileBytes(home_.path() / "corvane" / "today.ini",
                   "[window]\nmode=7\nwidth=nan\nheight=-3\npalette=@Variant(x)\nscreen=\n[places]\n=@Point("
                   "a\n\x01\xff");
    EXPECT_EQ(readWindowState(), WindowState());
}

TEST_F(ApplicationTest, AnswersUrlsItselfWhereNoProgramDoes) {
    const ProcessVariable noPrograms("PATH", home_.path().c_str());
    Application application(options());
    application.start();
    application.window().findChild<EmptyView*>()->click();
    EXPECT_TRUE(waitUntil([&] { return application.companion().isVisible(); }));
}

TEST_F(ApplicationTest, DrawsAPictureOrLeavesTheFileAlone) {
    fixture_.addTask(u"Milk");
    fixture_.save();
    const std::filesystem::path file = home_.path() / "today.png";
    DesktopOptions drawing = options();
    constexpr double kScaleOfTheProcess = 1;
    drawing.png = PngRequest{file, kScaleOfTheProcess, true};
    ASSERT_EQ(writePng(drawing), std::nullopt);
    const QImage image(QString::fromStdString(file.string()));
    EXPECT_EQ(image.width(), 359);
    EXPECT_LT(image.pixelColor(0, 0).lightness(), 60);

    drawing.png->file = home_.path() / "missing" / "today.png";
    const auto problem = writePng(drawing);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->find('\n'), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(home_.path() / "missing"));
}

TEST_F(ApplicationTest, TogglesTheAutostartEntry) {
    const std::filesystem::path entry = home_.path() / "autostart" / "com.velmor.CorvaneToday.desktop";
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(setAutostarted(true), std::nullopt);
        EXPECT_TRUE(isAutostarted());
        EXPECT_NE(fileBytes(entry).find("--background"), std::string::npos);
        writeFileBytes(entry, "[Desktop Entry]\nHidden = true\n");
        EXPECT_FALSE(isAutostarted());
        ASSERT_EQ(setAutostarted(false), std::nullopt);
        EXPECT_FALSE(std::filesystem::exists(entry));
    }
}

}  // namespace
}  // namespace corvane
