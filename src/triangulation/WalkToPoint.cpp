// Point location by a walk: barycentric coordinates tell the edge to cross.
#include "triangulation/modDelaunay2D.h"
#include "triangulation/modGeometria.h"

#include <cmath>
#include <limits>

namespace terravo::modDelaunay2D {
namespace {

using modGeometria::kTolerance;

struct Barycentric {
    double alpha;
    double beta;
    double gamma;
};

// Edge to cross towards the point (1..3), or 0 when the point is in or on the triangle.
int EdgeToCross(const Barycentric& b) {
    if (b.alpha < -kTolerance) {
        return 2;
    }
    if (b.beta < -kTolerance) {
        return 3;
    }
    return b.gamma < -kTolerance ? 1 : 0;
}

// Location code of a point that lies beyond none of the three edges.
int CodeWithin(const Barycentric& b) {
    const bool onEdge2 = b.alpha <= kTolerance;
    const bool onEdge3 = b.beta <= kTolerance;
    const bool onEdge1 = b.gamma <= kTolerance;
    if (onEdge2) {
        return onEdge3 ? 6 : onEdge1 ? 5 : 2;
    }
    if (onEdge3) {
        return onEdge1 ? 4 : 3;
    }
    return onEdge1 ? 1 : 0;
}

bool IsPointNumber(Index number, const Array1<PlanPoint>& coord) {
    return number >= 1 && number <= coord.UpperBound();
}

} // namespace

WalkResult WalkToPoint(PlanPoint point, const Array1<PlanPoint>& coord,
                       const TriangleList& triangles, Index start) {
    WalkResult result;
    result.triangle = start;
    if (start < 1 || start > triangles.count) {
        result.ierr = Ierr::kIndexOutOfRange;
        return result;
    }
    for (; result.steps < triangles.count; ++result.steps) {
        const Triangle& t = triangles.table[result.triangle];
        if (!IsPointNumber(t.vertices[0], coord) || !IsPointNumber(t.vertices[1], coord) ||
            !IsPointNumber(t.vertices[2], coord)) {
            result.ierr = Ierr::kIndexOutOfRange;
            return result;
        }
        const PlanPoint& a = coord[t.vertices[0]];
        const PlanPoint& b = coord[t.vertices[1]];
        const PlanPoint& c = coord[t.vertices[2]];
        const double dxa = a.x - c.x;
        const double dya = a.y - c.y;
        const double dxb = b.x - c.x;
        const double dyb = b.y - c.y;
        const double dx = point.x - c.x;
        const double dy = point.y - c.y;
        const double det = dxa * dyb - dya * dxb;
        if (modUtilita::IsExactly(det, 0.0)) {
            result.ierr = Ierr::kZeroDeterminant;
            return result;
        }
        Barycentric place{};
        place.alpha = (dx * dyb - dy * dxb) / det;
        place.beta = (dxa * dy - dya * dx) / det;
        place.gamma = 1.0 - place.alpha - place.beta;
        if (!std::isfinite(det) || !std::isfinite(place.gamma)) {
            result.ierr = Ierr::kOverflow;
            return result;
        }
        const int edge = EdgeToCross(place);
        if (edge == 0) {
            result.location = CodeWithin(place);
            return result;
        }
        const Index neighbour = t.Neighbour(edge);
        if (neighbour <= 0) {
            result.location = -edge;
            return result;
        }
        if (neighbour > triangles.count) {
            result.ierr = Ierr::kIndexOutOfRange;
            return result;
        }
        result.triangle = neighbour;
    }
    result.ierr = Ierr::kWalkRanOut;
    return result;
}

} // namespace terravo::modDelaunay2D
