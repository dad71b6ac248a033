// Sizes of texts: only a host knows its fonts, so it answers the widget's questions about them.
#pragma once

#include <string_view>

#include "platform/views/Font.h"
#include "platform/views/Geometry.h"

namespace corvane {

class TextMeasuring {
  public:
    virtual ~TextMeasuring() = default;

    /// The size of a text on one line, in points, unrounded.
    virtual Size sizeOfText(std::u16string_view text, const Font& font) const = 0;

    /// The size of a text broken into lines of the width `available.width`, in points, unrounded; at most
    /// `available.height` high.
    virtual Size boundingSizeOfText(std::u16string_view text, Size available, const Font& font) const = 0;
};

/// Every code unit is equally wide and every line equally high, in every font: where no fonts are at hand.
class FixedAdvanceMeasuring final : public TextMeasuring {
  public:
    /// @param advance, lineHeight  in points, above 0
    explicit FixedAdvanceMeasuring(double advance = 7, double lineHeight = 17)
        : advance_(advance), lineHeight_(lineHeight) {}

    Size sizeOfText(std::u16string_view text, const Font& font) const override;
    /// Lines break after every line feed and, wherever the width ends, between two code units.
    Size boundingSizeOfText(std::u16string_view text, Size available, const Font& font) const override;

  private:
    double advance_;
    double lineHeight_;
};

}  // namespace corvane
