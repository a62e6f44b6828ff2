#include "survey/KeptTriangulation.h"

#include "triangulation/QuickRoad.h"

#include <algorithm>

namespace terravo {

const KeptTriangulation::Result& KeptTriangulation::For(const PointSet& points,
                                                        const ProgressCallback& progress) {
    if (made_) {
        return result_;
    }
    Array1<PlanPoint> coord(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        coord[i] = {points.x[i], points.y[i]};
    }
    result_.triangles = TriangleList(points.count);
    result_.ierr = TriangulateQuickly(coord, result_.triangles, progress);
    made_ = result_.ierr != modDelaunay2D::Ierr::kStopped;
    return result_;
}

void KeptTriangulation::Reset() {
    made_ = false;
    result_ = {};
}

Index CountUnusedPoints(const PointSet& points, const TriangleList& triangles) {
    Array1<char> used(points.count, 0);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index vertex : triangles.table[t].vertices) {
            used[vertex] = 1;
        }
    }
    return static_cast<Index>(std::count(used.begin(), used.end(), 0));
}

Index CountHullEdges(const TriangleList& triangles) {
    Index count = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index neighbour : triangles.table[t].neighbours) {
            count += neighbour < 0 ? 1 : 0;
        }
    }
    return count;
}

} // namespace terravo
