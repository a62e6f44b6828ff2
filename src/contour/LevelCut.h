// The pieces of one level: what a plane leaves of all triangles.
//
// Data: the points and triangles, the level values, and for each level a list of segments and
// single points in triangle order. Method: each point learns once between which levels it lies; a
// triangle is listed under the levels that its corners reach, and only listed triangles are cut.
// The lists are made for a block of levels at a time, so that memory stays bounded however many
// levels a triangle spans.
#pragma once

#include "contour/LevelReach.h"
#include "contour/LevelSet.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <cstdint>
#include <vector>

namespace terravo {

/// A segment from (x1, y1) to (x2, y2), or the single point (x1, y1).
struct LevelPiece {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    bool isSegment = false;
};

class LevelCutter {
public:
    /// Keeps references to all three, which must not change meanwhile.
    LevelCutter(const PointSet& points, const TriangleList& triangles, const LevelSet& levels);

    /// The pieces of level k, in increasing triangle number. Levels must be asked for in
    /// increasing order; the result holds until the next call.
    const std::vector<LevelPiece>& Cut(Index k);

private:
    void CountTriangles();
    void FillBlock(Index firstLevel);

    const PointSet& points_;
    const TriangleList& triangles_;
    const LevelSet& levels_;
    LevelReach reach_;
    std::vector<std::uint64_t> levelStart_; // triangles listed under the levels before k, at k
    Index blockFirst_ = 1;
    Index blockEnd_ = 1; // first level after the block
    std::vector<Index> block_;
    std::vector<LevelPiece> pieces_;
};

} // namespace terravo
