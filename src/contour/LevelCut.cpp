#include "contour/LevelCut.h"

#include "contour/TriangleCut.h"

namespace terravo {
namespace {

SpacePoint PointAt(const PointSet& points, Index i) {
    return {points.x[i], points.y[i], points.z[i]};
}

} // namespace

LevelCutter::LevelCutter(const PointSet& points, const TriangleList& triangles,
                         const LevelSet& levels)
    : points_(points), triangles_(triangles), levels_(levels), reached_(points, triangles, levels) {
}

const std::vector<LevelPiece>& LevelCutter::Cut(Index k) {
    const Plane plane = Plane::AtLevel(levels_[k].value);
    pieces_.clear();
    for (const Index t : reached_.Of(k)) {
        const auto& corners = triangles_.table[t].vertices;
        const CutPoints cut =
            CutTriangleByPlane({PointAt(points_, corners[0]), PointAt(points_, corners[1]),
                                PointAt(points_, corners[2])},
                               plane);
        if (cut.Count() == 1) {
            pieces_.push_back({cut[1].x, cut[1].y, cut[1].x, cut[1].y, false});
        } else if (cut.Count() == 2) {
            pieces_.push_back({cut[1].x, cut[1].y, cut[2].x, cut[2].y, true});
        }
    }
    return pieces_;
}

} // namespace terravo
