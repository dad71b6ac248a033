// A colour as views and the store hold it.
#pragma once

#include <cstdint>

namespace corvane {

/// A colour by its components, or one of the system's adaptive colours.
///
/// Components are fractions; values outside 0...1 belong to wide-gamut colours and are kept. A host clamps
/// them when it draws, and may show an adaptive colour differently in the dark.
struct Color {
    enum class Form : std::uint8_t { kRgb, kWhite };
    enum class System : std::uint8_t { kNone, kRed, kTertiaryBackground };

    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    Form form = Form::kRgb;  ///< kWhite: made from one grey level; the three components are equal
    System system = System::kNone;

    static constexpr Color rgb(double red, double green, double blue, double alpha = 1) {
        return {red, green, blue, alpha, Form::kRgb, System::kNone};
    }
    static constexpr Color white(double level, double alpha = 1) {
        return {level, level, level, alpha, Form::kWhite, System::kNone};
    }
    static constexpr Color systemRed() {
        return {1, 0.23137254901960785, 0.18823529411764706, 1, Form::kRgb, System::kRed};
    }
    static constexpr Color tertiarySystemBackground() {
        return {1, 1, 1, 1, Form::kRgb, System::kTertiaryBackground};
    }

    bool operator==(const Color&) const = default;
};

}  // namespace corvane
