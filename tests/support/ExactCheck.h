// What a triangulation must be: signs by rational arithmetic, triangles by another road.
#pragma once

#include "triangulation/TriangleList.h"

#include <array>
#include <string>
#include <vector>

namespace terravo::test {

/// +1 when c lies to the left of a -> b, -1 to the right, 0 on the line.
int RationalTurn(PlanPoint a, PlanPoint b, PlanPoint c);

/// +1 when d lies inside the circle through a, b, c, which run counter-clockwise, -1 outside.
int RationalCircle(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d);

/// Checks that the triangles are a triangulation (see IsTriangulation), that no circle holds the
/// point across an edge, that of four points on one circle the latest has no diagonal, and that of
/// equal points the earliest alone is a corner.
/// @return the first thing that does not hold, or an empty text.
std::string ExactFaultOf(const Array1<PlanPoint>& coord, const TriangleList& triangles);

/// The triangles of an exact mesh that is made with half of the points, takes them one by one in
/// file order and drops repeats by itself: another road than the program's. Three points at least
/// are off one line.
TriangleList InsertedInFileOrder(const Array1<PlanPoint>& points);

/// The corners of every triangle by number, each starting at its lowest, sorted.
std::vector<std::array<Index, 3>> NumbersOf(const TriangleList& triangles);

} // namespace terravo::test
