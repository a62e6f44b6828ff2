#include "survey/Survey.h"

#include "triangulation/modDelaunay2D.h"

#include <algorithm>
#include <utility>

namespace terravo {

void Survey::Replace(PointSet points, const TriangulationWish& wish) {
    points_ = std::move(points);
    wish_ = wish;
    Changed();
}

PointSet Survey::Take() {
    PointSet points = std::exchange(points_, {});
    points_.sourceFolder = points.sourceFolder;
    Changed();
    return points;
}

void Survey::SetWish(const TriangulationWish& wish) {
    if (!(wish == wish_)) {
        wish_ = wish;
        Changed();
    }
}

void Survey::Changed() {
    ++version_;
    made_ = false;
    outcome_ = {};
}

const TriangulationOutcome& Survey::Triangulation(const StopToken& stop) const {
    if (made_) {
        return outcome_;
    }
    Array1<PlanPoint> coord(points_.count);
    for (Index i = 1; i <= points_.count; ++i) {
        coord[i] = {points_.x[i], points_.y[i]};
    }
    outcome_ = TriangulatePoints(coord, wish_, stop);
    made_ = outcome_.ierr != modDelaunay2D::Ierr::kStopped;
    return outcome_;
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
