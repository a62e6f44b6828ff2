#include "support/ExactCheck.h"

#include "triangulation/TriangulationCheck.h"
#include "triangulation/exact/ExactMesh.h"

#include <gmpxx.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace terravo::test {
namespace {

struct Offset {
    mpq_class x;
    mpq_class y;

    Offset(PlanPoint from, PlanPoint to)
        : x(mpq_class(to.x) - mpq_class(from.x)), y(mpq_class(to.y) - mpq_class(from.y)) {}
    [[nodiscard]] mpq_class Square() const { return x * x + y * y; }
};

mpq_class Cross(const Offset& a, const Offset& b) {
    return a.x * b.y - a.y * b.x;
}

// The number that a point has as a corner: that of the earliest at its place.
Array1<Index> EarliestOf(const Array1<PlanPoint>& coord) {
    std::map<std::pair<double, double>, Index> first;
    Array1<Index> earliest(coord.UpperBound());
    for (Index i = 1; i <= coord.UpperBound(); ++i) {
        earliest[i] = first.try_emplace({coord[i].x, coord[i].y}, i).first->second;
    }
    return earliest;
}

// What is across the edge from the apex of its triangle; 0 on the hull.
Index PointAcross(const TriangleList& triangles, TriangleEdge edge) {
    const Index u = triangles.Neighbour(edge.edge, edge.triangle);
    int k = 1;
    while (u > 0 && triangles.Neighbour(k, u) != edge.triangle) {
        ++k;
    }
    return u > 0 ? triangles.Vertex(NextEdge(NextEdge(k)), u) : 0;
}

bool GivesWay(const Array1<PlanPoint>& coord, const TriangleList& triangles, TriangleEdge edge) {
    const Index from = triangles.Vertex(edge.edge, edge.triangle);
    const Index to = triangles.Vertex(NextEdge(edge.edge), edge.triangle);
    const Index apex = triangles.Vertex(NextEdge(NextEdge(edge.edge)), edge.triangle);
    const Index across = PointAcross(triangles, edge);
    const int side =
        across == 0 ? -1 : RationalCircle(coord[from], coord[to], coord[apex], coord[across]);
    return side > 0 || (side == 0 && std::max(from, to) > std::max(apex, across));
}

} // namespace

int RationalTurn(PlanPoint a, PlanPoint b, PlanPoint c) {
    return sgn(Cross(Offset(a, b), Offset(a, c)));
}

int RationalCircle(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d) {
    const Offset toA(d, a);
    const Offset toB(d, b);
    const Offset toC(d, c);
    return sgn(toA.Square() * Cross(toB, toC) + toB.Square() * Cross(toC, toA) +
               toC.Square() * Cross(toA, toB));
}

std::string ExactFaultOf(const Array1<PlanPoint>& coord, const TriangleList& triangles) {
    if (!IsTriangulation(coord, triangles)) {
        return "no triangulation";
    }
    std::set<Index> corners;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            corners.insert(triangles.Vertex(j, t));
            if (GivesWay(coord, triangles, {t, j})) {
                return "edge " + std::to_string(j) + " of triangle " + std::to_string(t) +
                       " gives way";
            }
        }
    }
    const Array1<Index> earliest = EarliestOf(coord);
    return corners == std::set<Index>(earliest.begin(), earliest.end())
               ? ""
               : "the corners are not the earliest points of all places";
}

TriangleList InsertedInFileOrder(const Array1<PlanPoint>& points) {
    const Index known = points.UpperBound() / 2;
    Array1<PlanPoint> first = points;
    first.Resize(known);
    Array1<Index> ranks(known);
    std::iota(ranks.begin(), ranks.end(), 1);
    ExactMesh mesh(std::move(first), std::move(ranks));
    for (Index i = known + 1; i <= points.UpperBound(); ++i) {
        mesh.Append(points[i], i);
    }
    Index second = 2;
    while (points[second] == points[1]) {
        ++second;
    }
    Index third = second + 1;
    while (mesh.Turn(1, second, third) == 0) {
        ++third;
    }
    mesh.Begin(1, second, third);
    for (Index i = 2; i <= points.UpperBound(); ++i) {
        if (i != second && i != third) {
            mesh.Insert(i);
        }
    }
    return mesh.TakeTriangles();
}

std::vector<std::array<Index, 3>> NumbersOf(const TriangleList& triangles) {
    std::vector<std::array<Index, 3>> set;
    for (Index t = 1; t <= triangles.count; ++t) {
        std::array<Index, 3> corners = triangles.table[t].vertices;
        std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()),
                    corners.end());
        set.push_back(corners);
    }
    std::sort(set.begin(), set.end());
    return set;
}

} // namespace terravo::test
