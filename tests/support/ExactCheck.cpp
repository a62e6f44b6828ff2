#include "support/ExactCheck.h"

#include <gmpxx.h>

#include <algorithm>
#include <map>
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

class ExactChecker {
public:
    ExactChecker(const Array1<PlanPoint>& coord, const TriangleList& triangles)
        : coord_(coord), triangles_(triangles) {}

    std::string Fault() {
        for (Index t = 1; t <= triangles_.count && fault_.empty(); ++t) {
            CheckTriangle(t);
        }
        if (fault_.empty()) {
            CheckCorners();
            CheckHull();
        }
        return fault_;
    }

private:
    void Require(bool holds, const std::string& what) {
        if (!holds && fault_.empty()) {
            fault_ = what;
        }
    }

    void CheckTriangle(Index t) {
        const Triangle& triangle = triangles_.table[t];
        const auto [a, b, c] = triangle.vertices;
        Require(RationalTurn(coord_[a], coord_[b], coord_[c]) > 0,
                "triangle " + std::to_string(t) + " does not turn left");
        corners_.insert({a, b, c});
        for (int j = 1; j <= 3; ++j) {
            triangle.Neighbour(j) < 0 ? hull_.push_back({t, j}) : CheckInnerEdge({t, j});
        }
    }

    void CheckInnerEdge(TriangleEdge edge) {
        const Triangle& triangle = triangles_.table[edge.triangle];
        const std::string name =
            "edge " + std::to_string(edge.edge) + " of triangle " + std::to_string(edge.triangle);
        const Index u = triangle.Neighbour(edge.edge);
        if (u < 1 || u > triangles_.count) {
            Require(false, name + " has no neighbour");
            return;
        }
        const Index from = triangle.Vertex(edge.edge);
        const Index to = triangle.Vertex(NextEdge(edge.edge));
        const Index apex = triangle.Vertex(NextEdge(NextEdge(edge.edge)));
        for (int k = 1; k <= 3; ++k) {
            if (triangles_.Vertex(k, u) == to && triangles_.Vertex(NextEdge(k), u) == from) {
                const Index across = triangles_.Vertex(NextEdge(NextEdge(k)), u);
                Require(triangles_.Neighbour(k, u) == edge.triangle, name + " is not linked back");
                const int side =
                    RationalCircle(coord_[from], coord_[to], coord_[apex], coord_[across]);
                Require(side < 0 || (side == 0 && std::max(from, to) < std::max(apex, across)),
                        name + " gives way");
                return;
            }
        }
        Require(false, name + " is not its neighbour's");
    }

    void CheckCorners() {
        const Array1<Index> earliest = EarliestOf(coord_);
        Require(corners_ == std::set<Index>(earliest.begin(), earliest.end()),
                "the corners are not the earliest points of all places");
    }

    void CheckHull() {
        TriangleEdge edge = hull_.front();
        for (std::size_t step = 0; step < hull_.size() && fault_.empty(); ++step) {
            const Index link = triangles_.Neighbour(edge.edge, edge.triangle);
            Require(link < 0, "the ring leaves the hull");
            if (link < 0) {
                const TriangleEdge next = HullEdgeFromLink(link);
                const Index corner = triangles_.Vertex(next.edge, next.triangle);
                Require(triangles_.Vertex(NextEdge(edge.edge), edge.triangle) == corner,
                        "the ring jumps");
                Require(RationalTurn(
                            coord_[triangles_.Vertex(edge.edge, edge.triangle)], coord_[corner],
                            coord_[triangles_.Vertex(NextEdge(next.edge), next.triangle)]) >= 0,
                        "the hull is not convex");
                edge = next;
                Require((edge == hull_.front()) == (step + 1 == hull_.size()),
                        "the ring is not one ring");
            }
        }
        const auto wanted = 2 * corners_.size() - hull_.size() - 2;
        Require(static_cast<std::size_t>(triangles_.count) == wanted,
                std::to_string(triangles_.count) + " triangles, not " + std::to_string(wanted));
    }

    const Array1<PlanPoint>& coord_;
    const TriangleList& triangles_;
    std::set<Index> corners_;
    std::vector<TriangleEdge> hull_;
    std::string fault_;
};

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
    return triangles.count == 0 ? "no triangles" : ExactChecker(coord, triangles).Fault();
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
