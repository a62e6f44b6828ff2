#include "survey/SurfaceHeight.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

// Twice the area of the triangle of an edge and a place; negative on the right of the edge.
double Area(const PointSet& points, Index from, Index to, PlanPoint place) {
    return (points.x[from] - place.x) * (points.y[to] - place.y) -
           (points.y[from] - place.y) * (points.x[to] - place.x);
}

double AreaBeside(const PointSet& points, const Triangle& triangle, int edge, PlanPoint place) {
    return Area(points, triangle.Vertex(edge), triangle.Vertex(NextEdge(edge)), place);
}

std::optional<double> HeightIn(const PointSet& points, const Triangle& triangle, PlanPoint place) {
    const std::array<double, 3> areas{AreaBeside(points, triangle, 1, place),
                                      AreaBeside(points, triangle, 2, place),
                                      AreaBeside(points, triangle, 3, place)};
    const double whole = areas[0] + areas[1] + areas[2];
    const double height =
        (areas[1] * points.z[triangle.Vertex(1)] + areas[2] * points.z[triangle.Vertex(2)] +
         areas[0] * points.z[triangle.Vertex(3)]) /
        whole;
    return std::isfinite(height) ? std::optional(height) : std::nullopt;
}

// The steps are bounded for the sake of rounding: near an edge two triangles may each hand the walk
// to the other.
// @return whether `near` holds the place; else it is where the walk came to a rim.
bool WalkTo(const PointSet& points, const TriangleList& triangles, PlanPoint place, Index& near) {
    int entered = 1; // the edge that is tested last
    for (Index step = 0; step <= triangles.count; ++step) {
        const Triangle& triangle = triangles.table[near];
        int beyond = 0;
        for (int k = 0, j = NextEdge(entered); k < 3 && beyond == 0; ++k, j = NextEdge(j)) {
            beyond = AreaBeside(points, triangle, j, place) < 0 ? j : 0;
        }
        if (beyond == 0) {
            return true;
        }
        const Index next = triangle.Neighbour(beyond);
        if (next < 0) {
            return false;
        }
        for (int j = 1; j <= 3; ++j) {
            entered = triangles.Neighbour(j, next) == near ? j : entered;
        }
        near = next;
    }
    return false;
}

// The triangle whose rim edge a ray from the place towards smaller x meets first, where it meets an
// odd number of them; else 0: the place lies outside.
Index TriangleAtRim(const PointSet& points, const TriangleList& triangles, PlanPoint place) {
    bool isInside = false;
    Index nearest = 0;
    double nearestX = -std::numeric_limits<double>::infinity();
    for (Index t = 1; t <= triangles.count; ++t) {
        const Triangle& triangle = triangles.table[t];
        for (int j = 1; j <= 3; ++j) {
            if (triangle.Neighbour(j) > 0) {
                continue;
            }
            const Index a = triangle.Vertex(j);
            const Index b = triangle.Vertex(NextEdge(j));
            if ((points.y[a] > place.y) == (points.y[b] > place.y)) {
                continue;
            }
            const double part = (place.y - points.y[a]) / (points.y[b] - points.y[a]);
            const double x = std::lerp(points.x[a], points.x[b], part);
            if (x <= place.x) {
                isInside = !isInside;
                nearest = x > nearestX ? t : nearest;
                nearestX = std::max(nearestX, x);
            }
        }
    }
    return isInside ? nearest : 0;
}

bool Holds(const PointSet& points, const Triangle& triangle, PlanPoint place) {
    return AreaBeside(points, triangle, 1, place) >= 0 &&
           AreaBeside(points, triangle, 2, place) >= 0 &&
           AreaBeside(points, triangle, 3, place) >= 0;
}

bool IsWithin(const Extent& extent, double value) {
    return extent.min <= value && value <= extent.max;
}

// Beyond a rim: across a notch, in a hole, or in another part.
bool FindBeyondRim(const PointSet& points, const TriangleList& triangles, PlanPoint place,
                   Index& near) {
    if (!IsWithin(points.extentX, place.x) || !IsWithin(points.extentY, place.y)) {
        return false;
    }
    Index start = TriangleAtRim(points, triangles, place);
    if (start == 0) {
        return false;
    }
    if (WalkTo(points, triangles, place, start)) {
        near = start;
        return true;
    }
    for (Index t = 1; t <= triangles.count; ++t) {
        if (Holds(points, triangles.table[t], place)) {
            near = t;
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<double> SurfaceHeight(const PointSet& points, const TriangleList& triangles,
                                    PlanPoint place, Index& near) {
    if (triangles.count == 0) {
        return std::nullopt;
    }
    if (near < 1 || near > triangles.count) {
        near = 1;
    }
    const bool isFound =
        WalkTo(points, triangles, place, near) || FindBeyondRim(points, triangles, place, near);
    return isFound ? HeightIn(points, triangles.table[near], place) : std::nullopt;
}

} // namespace terravo
