#include "apps/corvane-today/ContrastMapping.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr int kSteps = 64;

double linearComponent(double component) {
    const double c = std::clamp(component, 0.0, 1.0);
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const Color& color) {
    return 0.2126 * linearComponent(color.red) + 0.7152 * linearComponent(color.green) +
           0.0722 * linearComponent(color.blue);
}

Color mixed(const Color& from, const Color& to, double share) {
    const auto component = [share](double a, double b) { return a + (b - a) * share; };
    return Color::rgb(component(from.red, to.red), component(from.green, to.green),
                      component(from.blue, to.blue));
}

}  // namespace

double contrastRatio(const Color& a, const Color& b) {
    const double first = relativeLuminance(a);
    const double second = relativeLuminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Color readableColor(const Color& color, const Color& ground, double contrast) {
    constexpr Color kBlack = Color::white(0);
    constexpr Color kWhite = Color::white(1);
    const bool isGroundDark = contrastRatio(ground, kWhite) > contrastRatio(ground, kBlack);
    const Color end = isGroundDark ? kWhite : kBlack;
    if (contrastRatio(color, ground) >= contrast) return color;
    for (int step = 1; step < kSteps; ++step) {
        const Color candidate = mixed(color, end, static_cast<double>(step) / kSteps);
        if (contrastRatio(candidate, ground) >= contrast) return candidate;
    }
    return end;
}

Color greyInTheDark(const Color& grey) {
    return Color::white(std::clamp(1.082 - 1.08 * grey.red, 0.0, 1.0), grey.alpha);
}

Color blendedColor(const Color& color, const Color& ground) {
    return mixed(ground, color, std::clamp(color.alpha, 0.0, 1.0));
}

}  // namespace corvane
