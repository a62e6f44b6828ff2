// Between which levels a point or a triangle lies.
//
// Data: for each point, the number of levels below it and up to it. Method: with equal spacing the
// place is guessed and mended by steps, else searched for; a triangle spans the levels from its
// lowest corner to its highest, so only those need to be cut.
#pragma once

#include "contour/LevelSet.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <algorithm>
#include <vector>

namespace terravo {

class LevelReach {
public:
    /// Levels below + 1 to upTo can touch.
    struct Span {
        Index below = 0;
        Index upTo = 0;
    };

    /// Levels that are not in increasing order are all taken to touch everything.
    LevelReach(const PointSet& points, const LevelSet& levels);

    /// The levels that can touch point i.
    [[nodiscard]] const Span& OfPoint(Index i) const { return spans_[static_cast<std::size_t>(i)]; }

    /// The levels that can touch the triangle.
    [[nodiscard]] Span Of(const Triangle& triangle) const;

private:
    [[nodiscard]] Span SpanOf(double z, const LevelSet& levels) const;

    double levelsPerUnit_ = 0; // 0 when the levels are not evenly spaced
    bool ordered_ = true;
    std::vector<Span> spans_; // of point i at i
};

/// The levels that can touch what reaches over both spans.
inline LevelReach::Span Joined(const LevelReach::Span& a, const LevelReach::Span& b) {
    return {std::min(a.below, b.below), std::max(a.upTo, b.upTo)};
}

} // namespace terravo
