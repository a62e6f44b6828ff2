#include "contour/LevelReach.h"

#include <algorithm>
#include <cmath>

namespace terravo {

LevelReach::LevelReach(const PointSet& points, const LevelSet& levels)
    : spans_(static_cast<std::size_t>(points.count) + 1) {
    const Index n = levels.UpperBound();
    ordered_ = std::is_sorted(
        levels.begin(), levels.end(),
        [](const LevelRecord& a, const LevelRecord& b) { return a.value < b.value; });
    if (n > 1) {
        const double perUnit = (n - 1) / (levels[n].value - levels[1].value);
        levelsPerUnit_ = std::isfinite(perUnit) ? perUnit : 0;
    }
    for (Index i = 1; i <= points.count; ++i) {
        spans_[static_cast<std::size_t>(i)] = SpanOf(points.z[i], levels);
    }
}

// The guess from equal spacing is off by one at most; uneven levels take more steps.
LevelReach::Span LevelReach::SpanOf(double z, const LevelSet& levels) const {
    const Index n = levels.UpperBound();
    if (!ordered_) {
        return {0, n};
    }
    const double guess = (z - levels[1].value) * levelsPerUnit_;
    Span span;
    span.below = static_cast<Index>(std::clamp(guess, 0.0, static_cast<double>(n)));
    while (span.below > 0 && levels[span.below].value >= z) {
        --span.below;
    }
    while (span.below < n && levels[span.below + 1].value < z) {
        ++span.below;
    }
    span.upTo = span.below;
    while (span.upTo < n && levels[span.upTo + 1].value <= z) {
        ++span.upTo;
    }
    return span;
}

LevelReach::Span LevelReach::Of(const Triangle& triangle) const {
    return Joined(Joined(OfPoint(triangle.Vertex(1)), OfPoint(triangle.Vertex(2))),
                  OfPoint(triangle.Vertex(3)));
}

} // namespace terravo
