// The triangulation that the program works with.
//
// Data: plan positions in file order. Method: up to 10 000 points go in one after the other in file
// order, with every sign as plain arithmetic gives it. Where that ends in a fault or in something
// that is no triangulation, and for larger sets, exact signs decide, with ties by file order:
// wherever the signs of plain arithmetic are right, both make the same triangles.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/StopToken.h"

namespace terravo {

/// Largest set that plain arithmetic is tried on: a hundredth of a second or two.
inline constexpr Index kMostPlainPoints = 10000;

enum class Arithmetic { Plain, Exact };

/// What the user or the caller asks for.
struct TriangulationWish {
    /// Exact signs at any size.
    bool exact = false;
    /// Unless exact signs are asked for, the rule about the first two points holds: a set in which
    /// no coordinate tells them apart, since one of the two values is zero, has no triangles. The
    /// companion program knows it so.
    bool keepsFirstPointsRule = false;

    bool operator==(const TriangulationWish&) const = default;
};

/// What came of triangulating.
struct TriangulationOutcome {
    Index ierr = 0; // modDelaunay2D::Ierr
    TriangleList triangles;
    Arithmetic arithmetic = Arithmetic::Plain;
};

/// Triangulates plan positions.
/// @param coord  positions of points 1..N.
/// @return kDone, without a triangle for no points or by the rule about the first two;
///         kAllCollinear for one place and for points on one line; kOutOfReach; kStopped.
TriangulationOutcome TriangulatePoints(const Array1<PlanPoint>& coord,
                                       const TriangulationWish& wish = {},
                                       const StopToken& stop = StopToken());

} // namespace terravo
