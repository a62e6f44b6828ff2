#include "contour/LevelReach.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

// Levels in one unit of height when they are spaced so evenly that each lies within one place of
// where that puts it; 0 otherwise.
double LevelsPerUnit(const LevelSet& levels) {
    const Index n = levels.UpperBound();
    const double perUnit = n > 1 ? (n - 1) / (levels[n].value - levels[1].value) : 0;
    for (Index k = 1; k <= n; ++k) {
        // Not true of infinities and of what is no number either.
        if (!(std::fabs((levels[k].value - levels[1].value) * perUnit - (k - 1)) < 1)) {
            return 0;
        }
    }
    return perUnit;
}

} // namespace

LevelReach::LevelReach(const PointSet& points, const LevelSet& levels)
    : spans_(static_cast<std::size_t>(points.count) + 1) {
    ordered_ = std::is_sorted(
        levels.begin(), levels.end(),
        [](const LevelRecord& a, const LevelRecord& b) { return a.value < b.value; });
    levelsPerUnit_ = LevelsPerUnit(levels);
    for (Index i = 1; i <= points.count; ++i) {
        spans_[static_cast<std::size_t>(i)] = SpanOf(points.z[i], levels);
    }
}

// A guess is mended by two steps at most, and costs a third of a search or less for points in
// random order.
LevelReach::Span LevelReach::SpanOf(double z, const LevelSet& levels) const {
    const Index n = levels.UpperBound();
    if (!ordered_) {
        return {0, n};
    }
    Span span;
    if (levelsPerUnit_ > 0) {
        const double guess = (z - levels[1].value) * levelsPerUnit_;
        span.below = static_cast<Index>(std::clamp(guess, 0.0, static_cast<double>(n)));
    } else {
        span.below =
            static_cast<Index>(std::lower_bound(levels.begin(), levels.end(), z,
                                                [](const LevelRecord& level, double value) {
                                                    return level.value < value;
                                                }) -
                               levels.begin());
    }
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
