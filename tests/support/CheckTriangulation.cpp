#include "support/CheckTriangulation.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace terravo::test {
namespace {

using Real = long double;

bool Before(const PlanPoint& a, const PlanPoint& b) {
    return std::pair(a.x, a.y) < std::pair(b.x, b.y);
}

Real Cross(const PlanPoint& a, const PlanPoint& b, const PlanPoint& c) {
    return (Real{b.x} - a.x) * (Real{c.y} - a.y) - (Real{b.y} - a.y) * (Real{c.x} - a.x);
}

std::vector<PlanPoint> DistinctPoints(const Array1<PlanPoint>& coord) {
    std::vector<PlanPoint> points(coord.begin(), coord.end());
    std::sort(points.begin(), points.end(), Before);
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

// Twice the area of the convex hull, by two monotone chains.
Real HullArea(const std::vector<PlanPoint>& sorted) {
    std::vector<PlanPoint> hull;
    const auto addChain = [&hull](auto begin, auto end) {
        const std::size_t base = hull.size();
        for (auto p = begin; p != end; ++p) {
            while (hull.size() >= base + 2 && Cross(hull[hull.size() - 2], hull.back(), *p) <= 0) {
                hull.pop_back();
            }
            hull.push_back(*p);
        }
        hull.pop_back();
    };
    addChain(sorted.begin(), sorted.end());
    addChain(sorted.rbegin(), sorted.rend());
    Real area = 0;
    for (std::size_t i = 2; i < hull.size(); ++i) {
        area += Cross(hull[0], hull[i - 1], hull[i]);
    }
    return area;
}

// Greater than 0 when d lies inside the circle through a, b, c; relative to the sizes involved.
Real InCircle(const PlanPoint& a, const PlanPoint& b, const PlanPoint& c, const PlanPoint& d) {
    const Real ax = Real{a.x} - d.x;
    const Real ay = Real{a.y} - d.y;
    const Real bx = Real{b.x} - d.x;
    const Real by = Real{b.y} - d.y;
    const Real cx = Real{c.x} - d.x;
    const Real cy = Real{c.y} - d.y;
    const Real a2 = ax * ax + ay * ay;
    const Real b2 = bx * bx + by * by;
    const Real c2 = cx * cx + cy * cy;
    const Real value =
        ax * (by * c2 - b2 * cy) - ay * (bx * c2 - b2 * cx) + a2 * (bx * cy - by * cx);
    const Real scale = (std::fabs(ax) + std::fabs(ay)) * (std::fabs(bx) + std::fabs(by)) * c2 +
                       a2 * (std::fabs(bx) + std::fabs(by)) * (std::fabs(cx) + std::fabs(cy));
    return scale > 0 ? value / scale : 0;
}

std::string Name(Index t, int j) {
    return "triangle " + std::to_string(t) + " edge " + std::to_string(j);
}

std::string FaultOfTriangle(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                            Index t) {
    const Triangle& triangle = triangles.table[t];
    const PlanPoint& a = coord[triangle.Vertex(1)];
    const PlanPoint& b = coord[triangle.Vertex(2)];
    const PlanPoint& c = coord[triangle.Vertex(3)];
    if (!(Cross(a, b, c) > 0)) {
        return "triangle " + std::to_string(t) + " is not counter-clockwise";
    }
    for (int j = 1; j <= 3; ++j) {
        const Index u = triangle.Neighbour(j);
        if (u < 0) {
            continue;
        }
        if (u == 0 || u > triangles.count) {
            return Name(t, j) + " has no neighbour number";
        }
        int shared = 0;
        for (int k = 1; k <= 3; ++k) {
            if (triangles.Neighbour(k, u) == t) {
                shared = k;
            }
        }
        if (shared == 0 || triangles.Vertex(shared, u) != triangle.Vertex(NextEdge(j)) ||
            triangles.Vertex(NextEdge(shared), u) != triangle.Vertex(j)) {
            return Name(t, j) + " is not linked back";
        }
        const PlanPoint& d = coord[triangles.Vertex(NextEdge(NextEdge(shared)), u)];
        if (InCircle(a, b, c, d) > 1e-12L) {
            return Name(t, j) + " breaks the empty-circle rule";
        }
    }
    return {};
}

std::string FaultOfHullRing(const TriangleList& triangles) {
    TriangleEdge first;
    Index hullEdges = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            if (triangles.Neighbour(j, t) < 0) {
                ++hullEdges;
                first = {t, j};
            }
        }
    }
    TriangleEdge edge = first;
    for (Index step = 1; step <= hullEdges; ++step) {
        const TriangleEdge next = HullEdgeFromLink(triangles.Neighbour(edge.edge, edge.triangle));
        if (next.triangle < 1 || next.triangle > triangles.count ||
            triangles.Neighbour(next.edge, next.triangle) >= 0) {
            return "the hull list leaves the hull after " + Name(edge.triangle, edge.edge);
        }
        if (triangles.Vertex(NextEdge(edge.edge), edge.triangle) !=
            triangles.Vertex(next.edge, next.triangle)) {
            return "the hull list jumps after " + Name(edge.triangle, edge.edge);
        }
        edge = next;
        if (edge == first && step != hullEdges) {
            return "the hull list closes too early";
        }
    }
    return edge == first ? std::string() : "the hull list does not close";
}

} // namespace

std::string FaultOf(const Array1<PlanPoint>& coord, const TriangleList& triangles) {
    Real area = 0;
    std::set<Index> used;
    for (Index t = 1; t <= triangles.count; ++t) {
        if (std::string fault = FaultOfTriangle(coord, triangles, t); !fault.empty()) {
            return fault;
        }
        const Triangle& triangle = triangles.table[t];
        area +=
            Cross(coord[triangle.Vertex(1)], coord[triangle.Vertex(2)], coord[triangle.Vertex(3)]);
        used.insert(triangle.vertices.begin(), triangle.vertices.end());
    }
    const std::vector<PlanPoint> distinct = DistinctPoints(coord);
    if (used.size() != distinct.size()) {
        return std::to_string(used.size()) + " of " + std::to_string(distinct.size()) +
               " distinct points are corners";
    }
    const Real hullArea = HullArea(distinct);
    if (std::fabs(area - hullArea) > 1e-9L * hullArea) {
        return "the areas do not sum to the convex hull";
    }
    return FaultOfHullRing(triangles);
}

} // namespace terravo::test
