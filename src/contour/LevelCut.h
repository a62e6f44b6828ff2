// The pieces of one level: what a plane leaves of all triangles.
//
// Data: the points and triangles, the level values, and for each level a list of segments and
// single points in triangle order. Method: only the triangles listed under a level are cut.
#pragma once

#include "contour/LevelTriangles.h"

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
    const PointSet& points_;
    const TriangleList& triangles_;
    const LevelSet& levels_;
    LevelTriangles reached_;
    std::vector<LevelPiece> pieces_;
};

} // namespace terravo
