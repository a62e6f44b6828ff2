#include "triangulation/KeptTriangulation.h"

#include <algorithm>
#include <numeric>

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
    Array1<Index> order(points.count);
    std::iota(order.begin(), order.end(), 1);
    result_.triangles = TriangleList(points.count);
    result_.ierr = modDelaunay2D::Triangulate(coord, order, result_.triangles,
                                              modDelaunay2D::StartRule::NearbyTriangle, progress);
    made_ = true;
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
