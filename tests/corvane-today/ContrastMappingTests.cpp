#include "apps/corvane-today/ContrastMapping.h"

#include <gtest/gtest.h>

#include <QTextDocument>

#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/WidgetPalette.h"

namespace corvane {
namespace {

constexpr Color kDarkGround = Color::rgb(32 / 255.0, 33 / 255.0, 36 / 255.0);

TEST(ContrastMapping, MeasuresAsTheGuidelinesDo) {
    EXPECT_NEAR(contrastRatio(Color::white(0), Color::white(1)), 21, 1e-9);
    EXPECT_NEAR(contrastRatio(Color::white(0.4), Color::white(1)), 5.74, 0.01);
    EXPECT_NEAR(contrastRatio(Color::white(0.4), kDarkGround), 2.80, 0.01);
    EXPECT_NEAR(contrastRatio(Color::rgb(1, 0, 0), Color::white(1)), 4.00, 0.01);
}

TEST(ContrastMapping, LeavesReadableColorsAloneAndMovesOthersJustFarEnough) {
    const Color green = Color::rgb(0, 0.5, 0);
    EXPECT_EQ(readableColor(green, Color::white(1)), green);
    const Color yellow = readableColor(Color::rgb(1, 1, 0), Color::white(1));
    EXPECT_GE(contrastRatio(yellow, Color::white(1)), 4.5);
    EXPECT_LT(contrastRatio(yellow, Color::white(1)), 5);
    EXPECT_EQ(yellow.red, yellow.green);
    EXPECT_EQ(yellow.blue, 0);
    EXPECT_GE(contrastRatio(readableColor(Color::rgb(0, 0, 0.4), kDarkGround), kDarkGround), 4.5);
}

TEST(ContrastMapping, TurnsFixedGreysInTheDark) {
    EXPECT_NEAR(greyInTheDark(Color::white(0.15)).red, 0.92, 0.001);
    EXPECT_NEAR(greyInTheDark(Color::white(0.4)).red, 0.65, 0.001);
}

TEST(WidgetPalette, KeepsEveryTextReadableInBothPalettes) {
    for (const WidgetPalette& palette : {WidgetPalette::light(), WidgetPalette::dark()}) {
        SCOPED_TRACE(palette.isDark());
        const auto ratio = [](const QColor& text, const QColor& ground) {
            const auto color = [](const QColor& c) { return Color::rgb(c.redF(), c.greenF(), c.blueF()); };
            return contrastRatio(color(text), color(ground));
        };
        for (const QColor& ground : {palette.ground(), palette.hoverGround(), palette.buttonGround()}) {
            EXPECT_GE(ratio(palette.text(), ground), 4.5);
            EXPECT_GE(ratio(palette.quietText(), ground), 4.5);
            EXPECT_GE(ratio(palette.accent(), ground), 4.5);
        }
        for (const Color& color : {Color::white(0.15), Color::white(0.4), Color::white(0.5),
                                   Color::systemRed(), Color::rgb(1, 1, 0, 0.3), Color::rgb(1.4, -0.2, 0)}) {
            EXPECT_GE(ratio(palette.readable(color), palette.ground()), 4.5);
        }
    }
}

TEST(WidgetPalette, BordersListColorsThatVanishInTheGround) {
    EXPECT_TRUE(WidgetPalette::light().isCloseToGround(Color::rgb(1, 1, 0.9)));
    EXPECT_TRUE(WidgetPalette::light().isCloseToGround(Color::rgb(0, 0, 0, 0.05)));
    EXPECT_FALSE(WidgetPalette::light().isCloseToGround(Color::rgb(0, 0.5, 0)));
    EXPECT_TRUE(WidgetPalette::dark().isCloseToGround(Color::rgb(0.1, 0.1, 0.15)));
    EXPECT_FALSE(WidgetPalette::dark().isCloseToGround(Color::rgb(1, 1, 0.9)));
}

TEST(ShownText, ShowsControlsAndMarkupHarmlessly) {
    EXPECT_EQ(shownLine(u"a\nb\tc\u2028d\u0007e"), QStringLiteral("a b c d e"));
    EXPECT_EQ(shownLine(u"x\u202Etxt"), QStringLiteral("x\uFFFDtxt"));
    EXPECT_LT(shownLine(std::u16string(100'000, u'x')).size(), 2000);
    const QString tip = shownToolTip(u"<b>x</b>", u"one & two\nthree");
    EXPECT_TRUE(tip.contains(QLatin1String("&lt;b&gt;x&lt;/b&gt;")));
    EXPECT_TRUE(tip.contains(QLatin1String("one &amp; two\nthree")));
    for (const char* text : {"3 tasks: <b>x</b>", "&lt;i", "<img src='file:///x'>"}) {
        ASSERT_TRUE(Qt::mightBeRichText(QString::fromLatin1(text)));
        EXPECT_FALSE(Qt::mightBeRichText(shownUnformatted(QString::fromLatin1(text)))) << text;
    }
}

}  // namespace
}  // namespace corvane
