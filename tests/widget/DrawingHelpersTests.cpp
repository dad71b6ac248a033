#include "widget/DrawingHelpers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {

// Every text has the size that the test wants.
struct Measured final : TextMeasuring {
    Size size;
    mutable Size asked;

    explicit Measured(Size measured) : size(measured) {}
    Size sizeOfText(std::u16string_view, const Font&) const override { return size; }
    Size boundingSizeOfText(std::u16string_view, Size available, const Font&) const override {
        asked = available;
        return size;
    }
};

TEST(ResizeToText, RoundsTheMeasureUpAndTheMarginToTheNearestPoint) {
    const std::tuple<double, double, double> rows[] = {
        {10.2,       4.6,  16        },
        {10.2,       4.49, 15        },
        {10.0000001, 4,    14        },
        {10,         -20,  -9        },
        {1e300,      4,    2147483647},
        {NAN,        4,    0         },
    };
    for (const auto& [measured, margin, expected] : rows) {
        SCOPED_TRACE(testing::Message() << measured << " and " << margin);
        Label label;
        label.text = u"text";
        label.frame = {3, 4, 0, 0};
        resizeToTextWithMarginWidth(label, margin, margin, Measured({measured, measured}));
        EXPECT_EQ(label.frame, (Rect{3, 4, expected, expected}));
    }
    Label label;
    resizeToTextWithMarginWidth(label, 6, 4, Measured({10, 16.5}));
    EXPECT_EQ(label.frame, (Rect{0, 0, 6, 4})) << "without a text";
}

TEST(HeightIfContainingString, IsAWholeNumberForTheWidthBetweenTheInsets) {
    TextView view;
    view.contentSize = {100, 50};
    const Measured measured({80, 30.1});
    EXPECT_EQ(heightIfContainingString(view, u"text", measured), 31);
    EXPECT_EQ(measured.asked, (Size{84, 999999}));
    EXPECT_EQ(heightIfContainingString(view, u"text", Measured({80, 30.0000001})), 30);
    EXPECT_EQ(heightIfContainingString(view, std::u16string(25, u'x'), FixedAdvanceMeasuring(7, 16.5)), 50);
    EXPECT_EQ(heightIfContainingString(view, u"\n", FixedAdvanceMeasuring(7, 16.5)), 33);
}

TEST(ImageFromColor, IsOnePixelWithTheColoursAlpha) {
    using Pixels = std::vector<Image::Pixel>;
    const Image::Pixel rounded{255, 128, 0, 64}, noNumber{0, 0, 0, 255}, toolbar{128, 148, 174, 255};
    EXPECT_EQ(imageFromColor(Color::rgb(1, 0.5, -0.2, 0.25)).pixels, Pixels{rounded});
    EXPECT_EQ(imageFromColor(Color::white(NAN, 1.5)).pixels, Pixels{noNumber});
    EXPECT_EQ(imageFromColor(toolbarColor()).pixels, Pixels{toolbar});
    EXPECT_EQ(imageFromColor(toolbarColor()).size, (Size{1, 1}));
}

}  // namespace
}  // namespace corvane
