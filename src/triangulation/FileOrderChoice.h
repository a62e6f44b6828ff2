// The diagonal that insertion in file order gives to four points, whatever the order of the work.
//
// Data: plan positions and the rank of each point in file order. Method: the sign of the
// empty-circle test where it stands clear of its rounding error. Elsewhere, four points on one
// circle included, the very test that insertion makes: when the last of the four comes, with that
// one as the first corner.
#pragma once

#include "triangulation/TriangleList.h"
#include "triangulation/modGeometria.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terravo {

/// Half the spacing of doubles at 1: the relative error of one operation.
inline constexpr double kUnitError = 0x1p-53;

/// The rounding error of the empty-circle test is at most 10 units of the sum of the magnitudes of
/// its products. The rest is room for what insertion makes of its own rounding errors on the way.
inline constexpr double kCircleBound = 256 * kUnitError;

/// The same for a turn, whose rounding error is at most 4 units.
inline constexpr double kTurnBound = 64 * kUnitError;

/// Below this part of the extent the tolerance of the walk could take a point for one on the hull.
inline constexpr double kLeastHeight = 1e-12;

/// Times the square of a reach: beyond what rounding errors of the walk make of a doubled area.
inline constexpr double kAreaBound = 16 * kUnitError;

struct Difference {
    double x;
    double y;

    [[nodiscard]] double Largest() const { return std::max(std::fabs(x), std::fabs(y)); }
};

inline Difference operator-(PlanPoint a, PlanPoint b) {
    return {a.x - b.x, a.y - b.y};
}

/// A computed value and the sum of the magnitudes of the products in it.
struct Sum {
    double value;
    double magnitude;
};

inline Sum Cross(Difference a, Difference b) {
    const double p = a.x * b.y;
    const double q = b.x * a.y;
    return {p - q, std::fabs(p) + std::fabs(q)};
}

inline Sum Dot(Difference a, Difference b) {
    const double p = a.x * b.x;
    const double q = a.y * b.y;
    return {p + q, std::fabs(p) + std::fabs(q)};
}

/// The empty-circle test of four corners a, b, c, d, counter-clockwise.
struct CircleTest {
    double value;     // > 0: the diagonal b-d; < 0: a-c
    double magnitude; // of the products in the value
    double blind;     // not below the value that insertion takes for a tie
    double reach;     // the largest coordinate difference

    /// True when the sign is that of the exact value, with room to spare.
    [[nodiscard]] bool IsClear() const {
        return std::fabs(value) > kCircleBound * magnitude + blind;
    }
};

inline CircleTest TestCircle(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d) {
    const Difference ab = b - a;
    const Difference ad = d - a;
    const Difference cb = b - c;
    const Difference cd = d - c;
    const Sum sineA = Cross(ab, ad);
    const Sum cosineA = Dot(ab, ad);
    const Sum sineC = Cross(cd, cb);
    const Sum cosineC = Dot(cb, cd);
    return {sineA.value * cosineC.value + sineC.value * cosineA.value,
            sineA.magnitude * cosineC.magnitude + sineC.magnitude * cosineA.magnitude,
            4 * modGeometria::kTolerance * std::fabs(ab.x),
            std::max({ab.Largest(), ad.Largest(), cb.Largest(), cd.Largest()})};
}

/// Four corners, counter-clockwise, the one of highest rank first.
struct RankedQuad {
    std::array<Index, 4> corners;
    bool evenTurn; // its first diagonal is the first diagonal of the corners as they were given
};

inline RankedQuad LatestFirst(const Array1<Index>& rank, Index a, Index b, Index c, Index d) {
    const Index ra = rank[a];
    const Index rb = rank[b];
    const Index rc = rank[c];
    const Index rd = rank[d];
    if (std::max(ra, rc) > std::max(rb, rd)) {
        return ra > rc ? RankedQuad{{a, b, c, d}, true} : RankedQuad{{c, d, a, b}, true};
    }
    return rb > rd ? RankedQuad{{b, c, d, a}, false} : RankedQuad{{d, a, b, c}, false};
}

/// True when insertion by rank gives the diagonal a-c to the quadrilateral a, b, c, d, whose
/// corners run counter-clockwise; with all four on one circle it joins the two beside the latest.
inline bool UsesFirstDiagonal(const Array1<PlanPoint>& coord, const Array1<Index>& rank, Index a,
                              Index b, Index c, Index d) {
    const CircleTest test = TestCircle(coord[a], coord[b], coord[c], coord[d]);
    if (test.IsClear()) {
        return test.value < 0;
    }
    const RankedQuad quad = LatestFirst(rank, a, b, c, d);
    const PlanPoint& p0 = coord[quad.corners[0]];
    const PlanPoint& p1 = coord[quad.corners[1]];
    const PlanPoint& p2 = coord[quad.corners[2]];
    const PlanPoint& p3 = coord[quad.corners[3]];
    const bool usesFirst =
        modGeometria::DiagonalChoice(p0.x, p0.y, p1.x, p1.y, p2.x, p2.y, p3.x, p3.y) == 1;
    return usesFirst == quad.evenTurn;
}

} // namespace terravo
