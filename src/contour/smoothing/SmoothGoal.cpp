#include "contour/smoothing/SmoothGoal.h"

#include <algorithm>

namespace terravo::smoothing {
namespace {

constexpr int kMostSteps = 30;
constexpr double kNear = 1e-9; // of the edge

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
    [[nodiscard]] double SlopeAt(double t) const {
        const double s = 1 - t;
        return 6 * (high - low) * s * t + lowSlope * s * (s - 2 * t) + highSlope * t * (t - 2 * s);
    }
};

// The place of height 0 between two parts; the nearer part where there is none. Newton's steps, or
// halvings where those lead out of what is left.
double ZeroOf(const EdgeCubic& cubic, double start, double low, double high) {
    if (cubic.At(low) >= 0) {
        return low;
    }
    if (cubic.At(high) <= 0) {
        return high;
    }
    double t = std::clamp(start, low, high);
    for (int i = 0; i < kMostSteps; ++i) {
        const double height = cubic.At(t);
        (height < 0 ? low : high) = t;
        const double onward = t - height / cubic.SlopeAt(t);
        const double next = onward > low && onward < high ? onward : (low + high) / 2;
        if (std::fabs(next - t) < kNear) {
            return next;
        }
        t = next;
    }
    return t;
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
    return ZeroOf(cubic, slider.raw, slider.from + margin, slider.to - margin);
}

} // namespace terravo::smoothing
