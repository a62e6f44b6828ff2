// Whether a table of triangles is a triangulation of its points, by exact signs.
//
// Data: plan positions and the triangles that somebody made of them. Method: where every triangle
// turns left, the links are mutual and the edges without a neighbour form one ring that turns left
// and goes round once, a place inside is covered by as many triangles as the ring goes round it:
// one. So nothing is left out and nothing lies over another.
#pragma once

#include "triangulation/TriangleList.h"

namespace terravo {

/// @param coord  positions of points 1..N, all within reach of exact signs.
/// @return false also when a point is neither a corner nor, within the tolerance of the walk, at
/// the
///         place of one.
bool IsTriangulation(const Array1<PlanPoint>& coord, const TriangleList& triangles);

} // namespace terravo
