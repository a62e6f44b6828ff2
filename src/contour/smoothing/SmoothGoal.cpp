#include "contour/smoothing/SmoothGoal.h"

namespace terravo::smoothing {
namespace {

constexpr int kHalvings = 30;

// Height above the level along an edge from the lower end up.
struct EdgeCubic {
    double low = 0; // at the ends
    double high = 0;
    double lowSlope = 0; // for the whole edge
    double highSlope = 0;

    [[nodiscard]] double At(double t) const {
        const double s = 1 - t;
        return low * s * s * (1 + 2 * t) + high * t * t * (3 - 2 * t) + lowSlope * t * s * s -
               highSlope * t * t * s;
    }
};

// The place of height 0 between two parts; the nearer part where there is none.
double ZeroOf(const EdgeCubic& cubic, double low, double high) {
    if (cubic.At(low) >= 0) {
        return low;
    }
    if (cubic.At(high) <= 0) {
        return high;
    }
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = (low + high) / 2;
        (cubic.At(middle) < 0 ? low : high) = middle;
    }
    return (low + high) / 2;
}

} // namespace

double GoalOf(const Slider& slider, const PointGradients* gradients) {
    const auto [lower, upper] = slider.ends;
    if (gradients == nullptr || slider.isCorner || !gradients->IsKnown(lower) ||
        !gradients->IsKnown(upper)) {
        return slider.raw;
    }
    const EdgeCubic cubic{-slider.raw * slider.rise, (1 - slider.raw) * slider.rise,
                          Dot((*gradients)[lower], slider.along),
                          Dot((*gradients)[upper], slider.along)};
    const double margin = kMargin * slider.Width();
    return ZeroOf(cubic, slider.from + margin, slider.to - margin);
}

} // namespace terravo::smoothing
