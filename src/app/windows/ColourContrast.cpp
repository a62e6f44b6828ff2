#include "app/windows/ColourContrast.h"

#include <algorithm>
#include <cmath>

namespace {

// Luminance as the eye weighs it, 0 black to 1 white.
double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

QColor MixedColour(const QColor& a, const QColor& b, double partOfB) {
    const auto mix = [partOfB](int from, int to) {
        return static_cast<int>(from + (to - from) * partOfB);
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

double Contrast(const QColor& a, const QColor& b) {
    const double first = Luminance(a);
    const double second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}
