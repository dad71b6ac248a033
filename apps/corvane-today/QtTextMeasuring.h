// Fonts of the desktop for the widget's rules: its points are the desktop's text size.
#pragma once

#include <QFont>

#include "platform/views/Font.h"
#include "platform/views/TextMeasuring.h"

namespace corvane {

/// The fonts of the widget's views, and how many device-independent pixels a point takes.
///
/// Rows are 44 points high whatever the font; a larger text size makes the points larger instead, so that
/// everything grows together.
class WidgetFonts {
  public:
    /// @param desktop  the font of the desktop's windows
    explicit WidgetFonts(const QFont& desktop);

    double pixelsPerPoint() const { return pixelsPerPoint_; }

    Font title() const { return {titleSize_, false}; }
    Font details() const { return {titleSize_ * kDetailsShare, false}; }
    Font heading() const { return {titleSize_ * kHeadingShare, true}; }

    /// The desktop's font in the size of one of the widget's, in device-independent pixels.
    QFont qtFont(const Font& font) const;

    bool operator==(const WidgetFonts&) const = default;

  private:
    static constexpr double kDetailsShare = 0.88;
    static constexpr double kHeadingShare = 1.3;

    QFont desktop_;
    double pixelsPerPoint_ = 1;
    double titleSize_ = 0;  ///< in points
};

class QtTextMeasuring final : public TextMeasuring {
  public:
    explicit QtTextMeasuring(WidgetFonts fonts) : fonts_(std::move(fonts)) {}

    const WidgetFonts& fonts() const { return fonts_; }
    void setFonts(WidgetFonts fonts) { fonts_ = std::move(fonts); }

    Size sizeOfText(std::u16string_view text, const Font& font) const override;
    Size boundingSizeOfText(std::u16string_view text, Size available, const Font& font) const override;

  private:
    WidgetFonts fonts_;
};

}  // namespace corvane
