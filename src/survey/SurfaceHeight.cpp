#include "survey/SurfaceHeight.h"

#include <cmath>

namespace terravo {
namespace {

// Twice the area of the triangle of an edge and a place; negative on the right of the edge.
double Area(const PointSet& points, Index from, Index to, PlanPoint place) {
    return (points.x[from] - place.x) * (points.y[to] - place.y) -
           (points.y[from] - place.y) * (points.x[to] - place.x);
}

} // namespace

// The steps are bounded for the sake of rounding: near an edge two triangles may each hand the walk
// to the other.
std::optional<double> SurfaceHeight(const PointSet& points, const TriangleList& triangles,
                                    PlanPoint place, Index& near) {
    if (triangles.count == 0) {
        return std::nullopt;
    }
    if (near < 1 || near > triangles.count) {
        near = 1;
    }
    int entered = 1; // the edge that is tested last
    for (Index step = 0; step <= triangles.count; ++step) {
        const Triangle& triangle = triangles.table[near];
        double areas[3] = {};
        int beyond = 0;
        for (int k = 0, j = NextEdge(entered); k < 3 && beyond == 0; ++k, j = NextEdge(j)) {
            const double area =
                Area(points, triangle.Vertex(j), triangle.Vertex(NextEdge(j)), place);
            areas[j - 1] = area;
            beyond = area < 0 ? j : 0;
        }
        if (beyond == 0) {
            const double whole = areas[0] + areas[1] + areas[2];
            const double height =
                (areas[1] * points.z[triangle.Vertex(1)] + areas[2] * points.z[triangle.Vertex(2)] +
                 areas[0] * points.z[triangle.Vertex(3)]) /
                whole;
            return std::isfinite(height) ? std::optional(height) : std::nullopt;
        }
        const Index next = triangle.Neighbour(beyond);
        if (next < 0) {
            return std::nullopt;
        }
        for (int j = 1; j <= 3; ++j) {
            entered = triangles.Neighbour(j, next) == near ? j : entered;
        }
        near = next;
    }
    return std::nullopt;
}

} // namespace terravo
