#include "triangulation/Certificate.h"

#include "triangulation/FileOrderChoice.h"
#include "triangulation/MeshEdit.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <future>
#include <limits>

namespace terravo {
namespace {

using modDelaunay2D::FindEdge;

// Below this part of the extent the walk could take a point for another one, by its tolerance or
// by its rounding errors in a triangle that is flat, or as large as the extent.
constexpr double kLeastDistance = 1e-10;
// With differences of at most this many steps of a lattice no operation of the two tests rounds:
// the products of four differences stay below 2^51.
constexpr double kMostSteps = 0x1p12;
enum class Trust { Certain, Tie, Uncertain };

// Largest power of two of which the value is a multiple.
double StepOf(double value) {
    if (modUtilita::IsExactly(value, 0.0)) {
        return std::numeric_limits<double>::infinity();
    }
    constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << 52U;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int zeros = std::countr_zero((bits & (kHiddenBit - 1)) | kHiddenBit);
    return std::ldexp(1.0, std::ilogb(value) - 52 + zeros);
}

class Checker {
public:
    explicit Checker(const RankedMesh& mesh)
        : mesh_(mesh), triangles_(mesh.triangles),
          leastSquare_(mesh.span * kLeastDistance * mesh.span * kLeastDistance) {}

    [[nodiscard]] bool TriangleIsCertain(Index number) const;

private:
    [[nodiscard]] bool HullEdgeIsCertain(Index number, int edge) const;
    [[nodiscard]] bool InnerEdgeIsCertain(Index number, int edge) const;
    [[nodiscard]] bool StandsAlone(Index number, int edge, Index across, int edgeAcross) const;
    [[nodiscard]] bool OuterEdgeIsCertain(Index number, int edge, Index otherApex) const;
    [[nodiscard]] Trust TrustIn(const CircleTest& test) const;
    [[nodiscard]] CircleTest Test(Index a, Index b, Index c, Index d) const {
        return TestCircle(At(a), At(b), At(c), At(d));
    }
    [[nodiscard]] bool IsSpacious(Index a, Index b, Index c, double reach) const;
    [[nodiscard]] bool KeepsSecondDiagonal(Index a, Index b, Index c, Index d) const;
    [[nodiscard]] bool TurnsLeft(Index a, Index b, Index c) const;

    const PlanPoint& At(Index point) const { return mesh_.coord[point]; }
    bool IsExact(double largest) const { return largest <= mesh_.exactReach; }

    const RankedMesh& mesh_;
    const TriangleList& triangles_;
    double leastSquare_;
};

// Clear, or exact, or neither.
Trust Checker::TrustIn(const CircleTest& test) const {
    if (test.IsClear()) {
        return Trust::Certain;
    }
    if (!IsExact(test.reach)) {
        return modUtilita::IsExactly(test.magnitude, 0.0) ? Trust::Tie : Trust::Uncertain;
    }
    if (modUtilita::IsExactly(test.value, 0.0)) {
        return Trust::Tie;
    }
    return std::fabs(test.value) > test.blind ? Trust::Certain : Trust::Uncertain;
}

bool Checker::KeepsSecondDiagonal(Index a, Index b, Index c, Index d) const {
    const CircleTest test = Test(a, b, c, d);
    return test.value > 0 && TrustIn(test) == Trust::Certain;
}

bool Checker::TurnsLeft(Index a, Index b, Index c) const {
    const Sum turn = Cross(At(b) - At(a), At(c) - At(a));
    return turn.value > kTurnBound * turn.magnitude;
}

// Corner c is not so near to the edge a-b that the walk, by its tolerance or its rounding errors in
// a triangle of that reach, could have taken it for a point on the edge or beyond.
bool Checker::IsSpacious(Index a, Index b, Index c, double reach) const {
    const Difference ab = At(b) - At(a);
    const double area = Cross(ab, At(c) - At(a)).value;
    const double leastHeight = kLeastHeight * reach;
    return area > kAreaBound * reach * reach &&
           area * area > leastHeight * leastHeight * Dot(ab, ab).value;
}

// The hull turns to the left at the end of the edge or goes straight on, and the triangle is not so
// flat that a point near its hull edge counts as lying on it.
bool Checker::HullEdgeIsCertain(Index number, int edge) const {
    const Triangle& t = triangles_.table[number];
    const PlanPoint& a = At(t.Vertex(edge));
    const PlanPoint& b = At(t.Vertex(NextEdge(edge)));
    const PlanPoint& apex = At(t.Vertex(NextEdge(NextEdge(edge))));
    const Difference ab = b - a;
    if (Cross(ab, apex - a).value <= kLeastHeight * mesh_.span * std::hypot(ab.x, ab.y)) {
        return false;
    }
    const TriangleEdge next = HullEdgeFromLink(t.Neighbour(edge));
    const PlanPoint& c = At(triangles_.Vertex(NextEdge(next.edge), next.triangle));
    const Difference bc = c - b;
    const Sum turn = Cross(ab, bc);
    if (turn.value > kTurnBound * turn.magnitude) {
        return true;
    }
    return modUtilita::IsExactly(turn.magnitude, 0.0) ||
           (IsExact(std::max(ab.Largest(), bc.Largest())) && turn.value >= 0);
}

bool Checker::OuterEdgeIsCertain(Index number, int edge, Index otherApex) const {
    const Triangle& t = triangles_.table[number];
    const Index across = t.Neighbour(edge);
    if (across < 0) {
        return true;
    }
    const Index from = t.Vertex(edge);
    const Index to = t.Vertex(NextEdge(edge));
    const Triangle& u = triangles_.table[across];
    const Index beyond = u.Vertex(NextEdge(NextEdge(FindEdge(u, to, from))));
    const Index apex = t.Vertex(NextEdge(NextEdge(edge)));
    return KeepsSecondDiagonal(apex, from, beyond, to) &&
           KeepsSecondDiagonal(otherApex, from, beyond, to);
}

// An uncertain diagonal does no harm where nothing else hangs on it: whichever way it lies, the
// four edges about it are certain, and it is decided by itself.
bool Checker::StandsAlone(Index number, int edge, Index across, int edgeAcross) const {
    const int e1 = NextEdge(edge);
    const int e2 = NextEdge(e1);
    const int f1 = NextEdge(edgeAcross);
    const int f2 = NextEdge(f1);
    const Index p = triangles_.Vertex(e2, number);
    const Index d = triangles_.Vertex(f2, across);
    const Index b = triangles_.Vertex(edge, number);
    const Index c = triangles_.Vertex(e1, number);
    return TurnsLeft(p, b, d) && TurnsLeft(p, d, c) && OuterEdgeIsCertain(number, e1, d) &&
           OuterEdgeIsCertain(number, e2, d) && OuterEdgeIsCertain(across, f1, p) &&
           OuterEdgeIsCertain(across, f2, p);
}

bool Checker::InnerEdgeIsCertain(Index number, int edge) const {
    const Triangle& t = triangles_.table[number];
    const Index across = t.Neighbour(edge);
    const Triangle& u = triangles_.table[across];
    const Index b = t.Vertex(edge);
    const Index c = t.Vertex(NextEdge(edge));
    const Index p = t.Vertex(NextEdge(NextEdge(edge)));
    const int edgeAcross = FindEdge(u, c, b);
    const Index d = u.Vertex(NextEdge(NextEdge(edgeAcross)));
    const CircleTest test = Test(p, b, d, c);
    if (!IsSpacious(b, c, p, test.reach) || !IsSpacious(c, b, d, test.reach)) {
        return false;
    }
    const Trust trust = TrustIn(test);
    if (trust == Trust::Certain) {
        return test.value > 0;
    }
    if (UsesFirstDiagonal(mesh_.coord, mesh_.rank, p, b, d, c)) {
        return false;
    }
    return trust == Trust::Tie || StandsAlone(number, edge, across, edgeAcross);
}

bool Checker::TriangleIsCertain(Index number) const {
    const Triangle& t = triangles_.table[number];
    const auto [a, b, c] = t.vertices;
    if (!TurnsLeft(a, b, c)) {
        return false;
    }
    for (int edge = 1; edge <= 3; ++edge) {
        const Index across = t.Neighbour(edge);
        if (across > 0 && across < number) {
            continue;
        }
        const Difference side = At(t.Vertex(NextEdge(edge))) - At(t.Vertex(edge));
        if (side.x * side.x + side.y * side.y <= leastSquare_ ||
            !(across < 0 ? HullEdgeIsCertain(number, edge) : InnerEdgeIsCertain(number, edge))) {
            return false;
        }
    }
    return true;
}

// True for the half of all directions that begins at east and goes counter-clockwise.
bool PointsUp(Difference step) {
    return step.y > 0 || (modUtilita::IsExactly(step.y, 0.0) && step.x > 0);
}

// A ring that turns left everywhere could still go round more than once, its triangles lying over
// each other.
bool HullGoesRoundOnce(const RankedMesh& mesh) {
    const TriangleList& triangles = mesh.triangles;
    TriangleEdge start;
    Index hullEdges = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int edge = 1; edge <= 3; ++edge) {
            if (triangles.Neighbour(edge, t) < 0) {
                ++hullEdges;
                start = {t, edge};
            }
        }
    }
    const auto stepAlong = [&](TriangleEdge hull) {
        const Triangle& t = triangles.table[hull.triangle];
        return mesh.coord[t.Vertex(NextEdge(hull.edge))] - mesh.coord[t.Vertex(hull.edge)];
    };
    int rounds = 0;
    Index steps = 0;
    TriangleEdge edge = start;
    do {
        const TriangleEdge next = HullEdgeFromLink(triangles.Neighbour(edge.edge, edge.triangle));
        rounds += !PointsUp(stepAlong(edge)) && PointsUp(stepAlong(next)) ? 1 : 0;
        edge = next;
    } while (++steps < hullEdges && !(edge == start));
    return rounds == 1 && steps == hullEdges && edge == start;
}

} // namespace

double ExactReach(const Array1<PlanPoint>& coord, double span) {
    const double useful = span / 0x1p40;
    double step = std::numeric_limits<double>::infinity();
    for (const PlanPoint& p : coord) {
        step = std::min({step, StepOf(p.x), StepOf(p.y)});
        if (step < useful) {
            return 0;
        }
    }
    return std::isfinite(step) ? kMostSteps * step : 0;
}

bool IsCertain(const RankedMesh& mesh) {
    const Checker checker(mesh);
    const auto partIsCertain = [&](Index first, Index last) {
        for (Index t = first; t <= last; ++t) {
            if (!checker.TriangleIsCertain(t)) {
                return false;
            }
        }
        return true;
    };
    const Index middle = mesh.triangles.count / 2;
    auto upperHalf =
        std::async(std::launch::async, partIsCertain, middle + 1, mesh.triangles.count);
    return partIsCertain(1, middle) && HullGoesRoundOnce(mesh) && upperHalf.get();
}

} // namespace terravo
